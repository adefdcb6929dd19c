#pragma once

#include <QString>
#include <QVariantList>

namespace vantrel {

class ComboBox;
class ListControl;
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

// Makes current the first row of the list whose name begins with the text, compared without case; a blank
// text goes to the first row, a text that matches nothing leaves the row where it is.
void SearchList(ListControl& list, const QString& text);

// Combos of codes and names.
// Fills the combo with the rows of a statement: its Code and the name column.
void FillCombo(Database& db, ComboBox& combo, const QString& sql,
               const QString& nameColumn = QStringLiteral("Name"));
// The code of the row the combo's text names (trimmed, without case): 0 for a blank text, -1 when the text is
// not in the list.
qint64 ComboCode(const ComboBox& combo);
// The code of the row the combo's text names, the row picked last first: two rows may share a name.
qint64 ChosenCode(const ComboBox& combo);
// Fills a list from a statement: the code from its Code column, the other columns displayed in their order.
void FillRows(Database& db, ListControl& list, const QString& sql, const QVariantList& params = {});
// The same for a large list (every brand, every patient): its rows are read once and kept while the tables
// it reads from do not change.
void FillRowsKept(Database& db, ListControl& list, const QString& sql, const QStringList& tables);
// Shows the row of this code, or a blank text when no row has it.
void ShowComboCode(ComboBox& combo, qint64 code);

} // namespace vantrel
