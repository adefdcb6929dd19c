#pragma once

#include <QString>

namespace vantrel {

class Database;
class Process;
struct ProcessState;

// The name of a brand, or an empty text when there is no brand of that code.
QString BrandName(Database& db, qint64 code);

// Blanks the observation of every examination in the list.
void ClearPhysicalObservations(ProcessState& state);

// Clears the list, then puts the observations of one owner at their examinations: kind "P" a patient,
// "D" a prescription (both by code), "V" a visit (by number). Examinations not in the list are skipped.
void LoadPhysicalObservations(ProcessState& state, const QString& kind, qint64 code,
                              const QString& visitNo = {});

// The help file, opened on its contents or on its index.
void ShowHelpContents(Process& process);
void ShowHelpIndex(Process& process);

} // namespace vantrel
