#pragma once

#include "core/Screen.h"
#include "store/Database.h"

#include <map>
#include <vector>

namespace vantrel {

// The screens on which the clinic edits its one row of parameters, `Control`: ControlForm in the main
// application and ControlOPD at the front desk. Each control stands for one column; the screen reads the
// row when it opens and writes every column it holds in one statement.
class ParameterScreen : public Screen {
public:
    // Shown: a text the screen shows but never writes.
    enum class Kind { Text, Shown, Flag, Number, Combo };
    struct Field {
        QString control;
        QString column;
        Kind kind;
        int page;          // the tab the control stands on
        int width = 0;     // digits of a number
        QString caption;   // what the screen says beside it
        QString statement; // the rows of a combo: Code and Name
    };
    // A colour family the screen edits: the option that chooses it and its two columns.
    struct Colour {
        QString option;
        int index;
        QString family; // column prefix: "Master" edits MasterFore and MasterBack
        QString caption;
    };

    // The colour families of the first tab's two sections, chosen by the options Opt_Mst(i) and Opt_Pre(i).
    static std::vector<Colour> Sections(const QStringList& first, const QStringList& firstCaptions,
                                        const QStringList& second, const QStringList& secondCaptions);

    ParameterScreen(Process& process, const QString& name, std::vector<Field> fields,
                    std::vector<Colour> colours, const QString& schedulerColumn, int tabs);

    void load() override;
    void activate() override;

    // Protected tabs may be entered once the control password was given.
    bool ControlAccess = false;

protected:
    // Columns the screen writes besides its fields.
    virtual void writeMore(std::vector<std::pair<QString, QVariant>>& columns) { Q_UNUSED(columns) }
    virtual void afterLoad(const Row& row) { Q_UNUSED(row) }
    // Run after the row was written, in the same transaction: false undoes the write.
    virtual bool afterWrite() { return true; }
    // Written with Ok and Apply; false leaves the row and the screen as they were.
    bool Write();
    QString Value(const QString& column) const;
    TabStrip& tabs() const { return *m_tabs; }
    // The row had not been saved on this screen before: the first run of the program.
    bool firstRun() const { return m_firstRun; }

    void Ok();
    void Apply();

private:
    void ShowColour();
    void ChangePassword(const QString& action);
    bool Verify();

    std::vector<Field> m_fields;
    std::vector<Colour> m_colours;
    std::map<QString, QString> m_colourValues;
    QString m_scheduler;
    bool m_schedulerOn = false;
    bool m_firstRun = false;
    const Colour* m_currentColour = nullptr;
    TabStrip* m_tabs = nullptr;
};

} // namespace vantrel
