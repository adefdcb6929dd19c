#include "prescription/Staging.h"

#include "store/Database.h"

#include <QStringList>

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

struct HistorySource {
    QString allergy, personal, past, family, filter;
};

bool Run(Database& db, const QString& sql, const QVariantList& params = {}) {
    return db.execute(sql, params) >= 0;
}

} // namespace

bool LoadPatientHistoryToStaging(Database& db, const QVariant& key, const QString& letter,
                                 const QString& stagingPrefix) {
    bool ok = true;
    const QString allergy = stagingPrefix + u"Allergy"_s;
    const QString personal = stagingPrefix + u"Personal"_s;
    const QString past = stagingPrefix + u"Past"_s;
    const QString family = stagingPrefix + u"Family"_s;
    for (const QString& table : {allergy, personal, past, family})
        ok = Run(db, u"DELETE FROM %1"_s.arg(table)) && ok;
    HistorySource source;
    if (letter == u"P"_s) {
        if (key.toLongLong() <= 0)
            return ok;
        source = {u"PatientAllergy"_s, u"PatientPersonal"_s, u"PatientPast"_s, u"PatientFamily"_s,
                  u"A.PatientCode = ?"_s};
    } else if (letter == u"V"_s) {
        if (key.toString().trimmed().isEmpty())
            return ok;
        source = {u"VisitAllergy"_s, u"VisitPersonal"_s, u"VisitPast"_s, u"VisitFamily"_s,
                  u"A.VisitNo = ?"_s};
    } else {
        if (key.toLongLong() <= 0)
            return ok;
        source = {u"PresAllergy"_s, u"PresPersonal"_s, u"PresPast"_s, u"PresFamily"_s,
                  u"A.PrescriptionCode = ?"_s};
    }
    const QVariantList params{letter == u"V"_s ? QVariant(key.toString()) : QVariant(key.toLongLong())};
    ok = Run(db,
             u"INSERT INTO %3 (AllergyCode, AllergyType, Type, AgeCode, Notes, AllergyName, "
             u"AgeName) "
             "SELECT A.AllergyCode, A.AllergyType, CASE A.AllergyType WHEN 'A' THEN 'Allergies' "
             "WHEN 'B' THEN 'Sub Allergies' WHEN 'D' THEN 'Drug Names' WHEN 'G' THEN 'Drug Groups' END, "
             "A.AgeCode, A.Notes, CASE A.AllergyType WHEN 'A' THEN B.Name WHEN 'B' THEN C.Name "
             "WHEN 'D' THEN D.Name WHEN 'G' THEN E.Name END, F.Name FROM %1 A "
             "LEFT JOIN Allergies B ON A.AllergyCode = B.Code LEFT JOIN AllergySub C ON A.AllergyCode = "
             "C.Code "
             "LEFT JOIN PharmaName D ON A.AllergyCode = D.Code LEFT JOIN DrugGroup E ON A.AllergyCode = "
             "E.Code "
             "LEFT JOIN AgeGroup F ON A.AgeCode = F.Code WHERE %2 ORDER BY A.rowid"_s.arg(
                 source.allergy, source.filter, allergy),
             params) &&
         ok;
    ok = Run(db,
             u"INSERT INTO %3 (PersonalCode, TimeSince, Qty, Notes, PersonalName, Quantative) "
             "SELECT A.PersonalCode, A.TimeSince, A.Qty, A.Notes, B.Name, B.Quantative FROM %1 A "
             "LEFT JOIN Personal B ON A.PersonalCode = B.Code WHERE %2 ORDER BY B.Name"_s.arg(
                 source.personal, source.filter, personal),
             params) &&
         ok;
    ok =
        Run(db,
            u"INSERT INTO %3 (PastCode, PastType, Type, AgeCode, Notes, PastName, AgeName) "
            "SELECT A.PastCode, A.PastType, CASE A.PastType WHEN 'D' THEN 'Diseases' WHEN 'P' THEN "
            "'Procedures' "
            "END, A.AgeCode, A.Notes, CASE A.PastType WHEN 'D' THEN B.Name WHEN 'P' THEN C.Name END, D.Name "
            "FROM %1 A LEFT JOIN Disease B ON A.PastCode = B.Code LEFT JOIN Surgery C ON A.PastCode = C.Code "
            "LEFT JOIN AgeGroup D ON A.AgeCode = D.Code WHERE %2 ORDER BY A.rowid"_s.arg(source.past,
                                                                                         source.filter, past),
            params) &&
        ok;
    ok = Run(db,
             u"INSERT INTO %3 (DiseasesCode, RelationCode, AgeCode, Notes, DiseasesName, "
             "RelationName, AgeName) SELECT A.DiseasesCode, A.RelationCode, A.AgeCode, A.Notes, B.Name, "
             "C.Relation, D.Name FROM %1 A JOIN Disease B ON A.DiseasesCode = B.Code "
             "JOIN Relation C ON A.RelationCode = C.Code LEFT JOIN AgeGroup D ON A.AgeCode = D.Code "
             "WHERE %2 ORDER BY A.rowid"_s.arg(source.family, source.filter, family),
             params) &&
         ok;
    return ok;
}

bool SaveHistoryFromStaging(Database& db, const QString& stagingPrefix, const QString& ownerPrefix,
                            const QString& keyColumn, qint64 code) {
    // A list, the rows it may not keep, and the columns it writes.
    struct History {
        QString list;
        QString incomplete;
        QString columns;
    };
    const QString age = u" OR AgeCode IS NULL OR AgeCode = '' OR NOT AgeCode > 0"_s;
    const History histories[] = {
        {u"Allergy"_s,
         u"AllergyCode IS NULL OR AllergyCode = '' OR NOT AllergyCode > 0"_s + age +
             u" OR TRIM(IFNULL(AllergyType, '')) = ''"_s,
         u"AllergyCode, AllergyType, AgeCode, Notes"_s},
        {u"Personal"_s, u"PersonalCode IS NULL OR PersonalCode = '' OR NOT PersonalCode > 0"_s,
         u"PersonalCode, TimeSince, Qty, Notes"_s},
        {u"Past"_s,
         u"PastCode IS NULL OR PastCode = '' OR NOT PastCode > 0"_s + age +
             u" OR TRIM(IFNULL(PastType, '')) = ''"_s,
         u"PastCode, PastType, AgeCode, Notes"_s},
        {u"Family"_s,
         u"DiseasesCode IS NULL OR DiseasesCode = '' OR NOT DiseasesCode > 0"_s + age +
             u" OR RelationCode IS NULL OR RelationCode = '' OR NOT RelationCode > 0"_s,
         u"DiseasesCode, RelationCode, AgeCode, Notes"_s},
    };
    bool ok = true;
    for (const History& h : histories) {
        const QString staging = stagingPrefix + h.list;
        ok = ok && Run(db, u"DELETE FROM %1 WHERE %2"_s.arg(staging, h.incomplete));
        ok = ok && Run(db,
                       u"INSERT INTO %1%2 (%3, %4) SELECT ?, %4 FROM %5 ORDER BY rowid"_s.arg(
                           ownerPrefix, h.list, keyColumn, h.columns, staging),
                       {code});
    }
    return ok;
}

bool LoadStagingFromPrescription(Database& db, qint64 prescription, bool whole) {
    bool ok = true;
    const QVariantList key{prescription};
    if (whole) {
        ok = Run(db, u"DELETE FROM TmpInvestigation"_s) && ok;
        if (prescription > 0)
            ok = Run(db,
                     u"INSERT INTO TmpInvestigation SELECT A.*, B.Description, B.Remarks "
                     "FROM PatientInvestigation A, Investigation B "
                     "WHERE A.InvestigationCode = B.Code AND A.PrescriptionCode = ? ORDER BY A.rowid"_s,
                     key) &&
                 ok;
        ok = Run(db, u"DELETE FROM TmpPhotoID"_s) && ok;
        if (prescription > 0)
            ok = Run(db, u"INSERT INTO TmpPhotoID SELECT * FROM PhotoID WHERE PrescriptionCode = ?"_s, key) &&
                 ok;
    }
    for (const QString& table : {u"TmpComplaint"_s, u"TmpDisease"_s, u"TmpSurgery"_s, u"TmpDet"_s})
        ok = Run(db, u"DELETE FROM %1"_s.arg(table)) && ok;
    if (prescription <= 0)
        return ok;
    ok = Run(db,
             u"INSERT INTO TmpComplaint (ComplaintCode, Notes, ComplaintName) SELECT A.ComplaintCode, "
             u"A.Notes, "
             "B.Name FROM PresComplaint A, Complaints B WHERE A.ComplaintCode = B.Code AND "
             "A.PrescriptionCode = ? "
             "ORDER BY B.Name"_s,
             key) &&
         ok;
    ok =
        Run(db,
            u"INSERT INTO TmpDisease (DiseaseCode, Notes, DiseaseName) SELECT A.DiseaseCode, A.Notes, B.Name "
            "FROM PresDisease A, Disease B WHERE A.DiseaseCode = B.Code AND A.PrescriptionCode = ? "
            "ORDER BY B.Name"_s,
            key) &&
        ok;
    ok =
        Run(db,
            u"INSERT INTO TmpSurgery (SurgeryCode, Notes, SurgeryName) SELECT A.SurgeryCode, A.Notes, B.Name "
            "FROM PresSurgery A, Surgery B WHERE A.SurgeryCode = B.Code AND A.PrescriptionCode = ? "
            "ORDER BY B.Name"_s,
            key) &&
        ok;
    // A line without a symbol or a remark is kept.
    ok = Run(db,
             u"INSERT INTO TmpDet (Code, Name, DsgFmCode, DsgFmName, SymbolCode, SymbolName, DsgRemarkCode, "
             "DsgRemarkName, Dosage, \"Update\") SELECT A.GenericCode, B.Name, A.DsgFmCode, C.Name, "
             "A.SymbolCode, "
             "D.Name, A.DsgRemarkCode, E.Name, A.Dosage, 0 FROM PresDet A "
             "JOIN GenericName B ON A.GenericCode = B.Code JOIN DosageForm C ON A.DsgFmCode = C.Code "
             "LEFT JOIN Symbols D ON A.SymbolCode = D.Code LEFT JOIN DsgRemark E ON A.DsgRemarkCode = E.Code "
             "WHERE A.Code = ? ORDER BY B.Name"_s,
             key) &&
         ok;
    return ok;
}

} // namespace vantrel
