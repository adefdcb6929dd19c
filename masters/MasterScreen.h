#pragma once

#include "core/Lookup.h"
#include "core/Screen.h"
#include "store/Database.h"

#include <array>
#include <utility>
#include <vector>

namespace vantrel {

// The buttons of a master screen, in the order of the enabling patterns ("11111111001"): the four move
// buttons, New, Edit, Find, Delete, Save, Cancel, Quit.
enum class MasterButton { Top, Back, Next, Last, New, Edit, Find, Delete, Save, Undo, Quit };
inline constexpr int kMasterButtons = 11;

// Everything in which one master screen differs from another: its table, its words and its statements.
struct MasterDefinition {
    QString screen;     // "Mst_Company"
    QString table;      // "Manufacturer"
    QString key;        // key of the in-use and duplicate checks, "COMPANY"
    QString label;      // the word of the messages, "Manufacturer"; the caption of the name's frame
    QString nameColumn; // the column the name box fills, "Name"
    QString recordset;  // the screen's rows, in their order
    QString locator;    // the statement handed to Find: Code and Name
    QString heading;    // Find's list heading
    QString locate;     // Find's caption
    QString title;      // after AppTitle in the main window, "   [Manufacturer Master]"
    QString colours;    // colour family, "Master" or "MstDet"
    QString nameBox;    // "Txt_Name"

    // Columns written with the same value at every save.
    std::vector<std::pair<QString, QVariant>> fixedColumns;

    // Messages.
    QString first, last, deleteQuestion, inUse, empty, blank, duplicate, added, updated, deleteError;

    // The buttons: one array (`Cmd(0)` to `Cmd(10)`) when `buttonArray` is set, else the separate names.
    QString buttonArray;
    std::array<QString, kMasterButtons> buttons;
    std::array<QString, kMasterButtons> captions;
};

// The definition of a master whose messages are built from its label ("Manufacturer"): "First
// Manufacturer.", "Delete Current Manufacturer ?", "Manufacturer Description Should Not be Empty.", ...
// The buttons are Cmd_Top to Cmd_Quit.
MasterDefinition StandardMaster(const QString& screen, const QString& table, const QString& key,
                                const QString& label, const QString& recordset, const QString& heading,
                                const QString& locate, const QString& title);

// The three messages about the name: "<subject> Should Not be Empty." at Save, "<subject> Should Not be
// Blank." on leaving the box, and the duplicate's.
void NameMessages(MasterDefinition& definition, const QString& subject, const QString& duplicate);

// The master record screen: a cursor over one table in the order of its statement, the three states
// (View, Editing, Empty), the move, new, edit, find, delete, save and cancel buttons with their messages.
// Richer masters derive from it and add their fields through the hooks below; the button logic stays here.
class MasterScreen : public Screen {
public:
    MasterScreen(Process& process, MasterDefinition definition);

    void load() override;
    void activate() override;

    const MasterDefinition& definition() const { return m_def; }
    // 0 view, 1 new, 2 edit.
    int EditMode() const { return m_editMode; }
    // The code of the row shown, or 0 on an empty table.
    qint64 currentCode() const;
    TextBox& nameBox() const { return *m_name; }
    Control& button(MasterButton which) const;

protected:
    // Extra fields of a richer master. Each is called by the button logic at its moment.
    // The state changed: open the fields for editing or lock them.
    virtual void lockFields(bool editing) { Q_UNUSED(editing) }
    // New was pressed: blank the fields.
    virtual void clearFields() {}
    // A row is shown (its columns by name), or nothing on an empty table.
    virtual void showFields(const Row* row) { Q_UNUSED(row) }
    // The checks of Save after the name's; a refusal shows its message, sets the focus and returns false.
    virtual bool validateFields() { return true; }
    // The columns written besides the name.
    virtual void writeFields(std::vector<std::pair<QString, QVariant>>& columns) { Q_UNUSED(columns) }
    // Rows of other tables written with the record, in the same transaction; false on a failure.
    virtual bool writeLinks(qint64 code) {
        Q_UNUSED(code)
        return true;
    }
    // Rows of other tables deleted before the record, in the same transaction; false on a failure.
    virtual bool deleteLinks(qint64 code) {
        Q_UNUSED(code)
        return true;
    }
    // Guards of Edit and Delete on the current row: a refusal shows its message and returns false.
    virtual bool mayEdit() { return true; }
    virtual bool mayDelete() { return true; }
    // The group of the duplicate test, for masters whose names are unique within a group only.
    virtual qint64 parentCode() const { return 0; }
    // Opens the locator with SelectedCode set to the current row and returns the code chosen, or 0.
    virtual qint64 locate();
    // Checks made when the screen is first activated; false closes it (after its message).
    virtual bool openingChecks() { return true; }

    // Fields kept in a column of the table: shown with the row, blanked by New, open while editing, written
    // by Save. A combo shows the name of the code its column holds; a text not in its list is refused with
    // `invalid` on leaving it and at Save.
    TextBox& addTextField(const QString& control, const QString& column);
    CheckBox& addFlagField(const QString& control, const QString& column);
    ComboBox& addComboField(const QString& control, const QString& column, const QString& statement,
                            const QString& invalid);

    // Replaces the words and statements before the screen loads, for a screen that serves several tables;
    // the controls stay as they are.
    void setDefinition(MasterDefinition definition);
    // True when another row of the table has this value in the column: codes and identities that must
    // stay unique. The row itself (`code`) is left out.
    bool IsValueTaken(const QString& column, const QString& value, qint64 code);

    // Reads the rows again and shows the one with this code (or the first row).
    void requery(qint64 code);
    void showCurrent();

private:
    enum class Mode { View, Editing, Empty };
    void enter(Mode mode);
    void goTo(int position);

    void Top();
    void Back();
    void Next();
    void Last();
    void New();
    void Edit();
    void Find();
    void Delete();
    void Save();
    void Undo();
    bool nameLeave();

    struct Bound {
        Control* control;
        QString column;
        QString statement;
        QString invalid;
    };
    bool ComboKnown(const Bound& field);

    MasterDefinition m_def;
    std::vector<Bound> m_fields;
    TextBox* m_name = nullptr;
    Label* m_frame = nullptr;
    std::array<Control*, kMasterButtons> m_buttons{};
    std::vector<qint64> m_codes;
    int m_position = -1;
    int m_editMode = 0;
};

} // namespace vantrel
