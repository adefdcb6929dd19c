#pragma once

#include <QString>
#include <QVariant>

namespace vantrel {

class Database;

// Empties the four staged history lists and fills them from a patient ("P"), a visit ("V", the key is
// the visit number) or a prescription (any other letter). A key that is not above 0 leaves them empty.
// The prescription stages them in TmpPresAllergy..., the patient master in TmpPatientAllergy...
bool LoadPatientHistoryToStaging(Database& db, const QVariant& key, const QString& letter,
                                 const QString& stagingPrefix = QStringLiteral("TmpPres"));

// Writes the staged history lists to the owner's tables ("Pres..." by PrescriptionCode, "Patient..." by
// PatientCode) for the owner's code: incomplete rows are dropped first. Part of the caller's transaction.
bool SaveHistoryFromStaging(Database& db, const QString& stagingPrefix, const QString& ownerPrefix,
                            const QString& keyColumn, qint64 code);

// Empties the staged clinical lists of a prescription (complaints, diseases, procedures, brand lines) and
// fills them from the prescription, ordered by name; with `whole`, its investigations and images too.
bool LoadStagingFromPrescription(Database& db, qint64 prescription, bool whole);

} // namespace vantrel
