#pragma once

#include <QString>
#include <functional>

namespace vantrel {

class Database;

class Process;
class Screen;
struct ProcessState;

// The title of the main window's design, before the clinic user's name.
inline constexpr char16_t kDesignTitle[] = u"Vantrel 3.0";

// The program's entry: from the single-instance test to the main window. `programFolder` is the folder
// of the program file.
void Main(Process& process, int runMode, const QString& programFolder);

// The only exit routine: every way of leaving the program passes here.
void ExitApplication(Process& process);

// Reads the Control row into the process and makes sure the clinic user's prescriber row exists.
bool LoadControlParameters(Process& process);

// The text of a clinic parameter by its name ("Registration", "City1", "DefaultFee", ...): the loaded
// parameters at start-up, the parameter screen's controls when it saves.
using ParameterText = std::function<QString(const QString& parameter)>;

// Finds the clinic user's Prescriber row by name; when there is none the main application adds it from the
// loaded parameters and the front desk refuses to go on.
void EnsureClinicPrescriber(Process& process);
// Edits the clinic user's Prescriber row, or adds it, from the same parameters as EnsureClinicPrescriber.
// False when the statement failed.
bool UpdateClinicPrescriber(Database& db, const ParameterText& value);

// The paths below the program's folder, and the image folders made when missing.
void SetPaths(ProcessState& state, const QString& programFolder);
void PrepareImageFolders(ProcessState& state);

// Opens the database of the process, as start-up and the database utilities do.
bool OpenDatabase(Process& process, QString* error);

// "Dr. Anil Mehta" from "DR. ANIL MEHTA": the first letter of every word raised, the rest lowered.
QString ProperCase(const QString& text);

// Puts the screen's caption in the main window's title and clears the screen's own.
void SetScreenTitle(Screen& screen);

// The colour pair of a screen family ("Master", "Utility", ...) as the clinic set it, as colour values.
struct ColourPair {
    bool valid = false;
    unsigned fore = 0;
    unsigned back = 0;
};
ColourPair FamilyColours(Process& process, const QString& family);

} // namespace vantrel
