#include "core/KeyFilters.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "core/Screen.h"

using namespace Qt::StringLiterals;

namespace vantrel {

// Offers to keep the prescription just saved as a ready-made prescription. The name chosen comes back as
// outputs["SaveReadyMade"]; an empty one (Cancel, the close box) copies nothing.
class FrmSaveAsRM : public Screen {
public:
    explicit FrmSaveAsRM(Process& owner) : Screen(owner, u"FrmSaveAsRM"_s) {
        setCaption(u"Save Prescription As Readymade Prescription"_s);
        m_name = &add<TextBox>(u"TxtName"_s);
        m_name->keyFilter = KeyName;
        m_names = &add<ListBox>(u"LstNames"_s);
        auto& save = add<Button>(u"Cmd_Save"_s);
        save.setCaption(u"&Save"_s);
        save.onClick = [this] { Save(); };
        auto& cancel = add<Button>(u"Cmd_Cancel"_s);
        cancel.setCaption(u"&Cancel"_s);
        cancel.setCausesValidation(false);
        cancel.onClick = [this] { close(); };
        add<Button>(u"Cmd_Detail"_s).setCaption(u"&Details"_s);
    }

    void load() override {
        std::vector<ListRow> rows;
        for (const Row& row : db().select(u"SELECT Code, Name FROM Readymade ORDER BY Name"_s))
            rows.push_back({row.integer(u"Code"_s), {row.text(u"Name"_s)}, false});
        m_names->setRows(std::move(rows));
        outputs.insert(u"SaveReadyMade"_s, QString());
        setFocus(*m_name);
    }

private:
    void Save() {
        const QString name = m_name->text().trimmed();
        if (name.isEmpty()) {
            prompter().stop(u"Name of Readymade Prescription Should Not be Left Blank."_s);
            setFocus(*m_name);
            return;
        }
        if (db().exists(u"SELECT Code FROM Readymade WHERE Name = ?"_s, {name})) {
            prompter().stop(u"Duplicate Prescription Name."_s);
            setFocus(*m_name);
            return;
        }
        outputs.insert(u"SaveReadyMade"_s, name);
        close();
    }

    TextBox* m_name = nullptr;
    ListBox* m_names = nullptr;
};

VANTREL_SCREEN(FrmSaveAsRM);

} // namespace vantrel
