#include "core/Host.h"
#include "core/KeyFilters.h"
#include "core/Lookup.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "core/Screen.h"
#include "core/Startup.h"

using namespace Qt::StringLiterals;

namespace vantrel {

// The locator of the masters: a list of codes and names from any statement, an incremental search and a
// select button. It knows nothing of the table. The caller hands over
//   state.ScratchSql    the statement, giving at least the columns Code and Name, in the list's order;
//   state.SelectedCode  the code of the row to start on;
//   state.QueryMode     true when the list is only looked at: nothing can be selected;
// names the dialog and the heading over the list in the setup of Process::openModal,
//   process.openModal(u"Find"_s, [](Screen& f) {
//       f.setCaption(u"Locate a Specified Manufacturer"_s);
//       f.control(u"Frame2"_s)->setCaption(u"List of All Avaliable Manufacturers"_s);
//   });
// and reads state.SelectedCode when it has closed: the code chosen, or 0.
class Find : public Screen {
public:
    explicit Find(Process& process) : Screen(process, u"Find"_s) {
        setCaption(u"Locate a Specified Record"_s);
        colourFamily = u"Find"_s;
        add<Label>(u"Frame1"_s, -1, ControlKind::Frame).setCaption(u"Search Text"_s);
        m_search = &add<TextBox>(u"Txt_Search"_s);
        m_search->keyFilter = [](int key, const QString& text, int selStart) {
            return KeyName(key, text, selStart);
        };
        m_search->onChange = [this] { SearchList(*m_list, m_search->text()); };
        add<Label>(u"Frame2"_s, -1, ControlKind::Frame).setCaption(u"List of Available Records"_s);
        m_list = &add<ListBox>(u"DBG_Name"_s);
        m_list->columnHeadings = {u"Name"_s};
        // Enter inside the list moves along the row, which shows only the name: the focus stays.
        m_list->onKeyPress = [](int key) { return KeyResult{key == 13 ? 0 : key, false}; };
        connect(m_list, &Control::changed, this, [this] { showPosition(); });
        m_position = &add<Label>(u"Data1"_s);
        m_select = &add<Button>(u"Cmd_Ok"_s);
        m_select->setCaption(u"&Select"_s);
        m_select->onClick = [this] { Select(); };
        auto& cancel = add<Button>(u"Cmd_Undo"_s);
        cancel.setCaption(u"&Cancel"_s);
        cancel.setCausesValidation(false);
        cancel.onClick = [this] { Cancel(); };
    }

    void load() override {
        host().hourglass(true);
        std::vector<ListRow> rows;
        const Statement& statement = state().ScratchSql;
        for (const Row& row : db().select(statement.sql, statement.params))
            rows.push_back({row.integer(u"Code"_s), {row.text(u"Name"_s)}, false});
        m_list->setRows(std::move(rows));
        m_list->setCurrent(0);
        showPosition();
        host().hourglass(false);
    }

    void activate() override {
        if (!firstActivation())
            return;
        ProcessState& s = state();
        if (s.QueryMode) {
            SetScreenTitle(*this);
            m_select->setEnabled(false);
        }
        if (m_list->count() == 0) {
            prompter().stop(u"No Record Found."_s);
            s.SelectedCode = 0;
            close();
            return;
        }
        if (!s.QueryMode) {
            const int row = m_list->findCode(s.SelectedCode);
            if (row >= 0)
                m_list->setCurrent(row);
        }
        setFocus(*m_search);
    }

    // The window's close box cancels.
    bool queryClose() override {
        state().SelectedCode = 0;
        return true;
    }

    void unload() override {
        if (state().QueryMode)
            host().setMainTitle(state().AppTitle + u"   [Masters Query]"_s);
    }

private:
    void showPosition() {
        m_position->setCaption(u"Current Record is "_s + QString::number(m_list->current() + 1));
    }

    void Select() {
        const QVariant code = m_list->currentCode();
        state().SelectedCode = code.isValid() ? code.toLongLong() : 0;
        close();
    }

    void Cancel() {
        state().SelectedCode = 0;
        close();
    }

    ListBox* m_list = nullptr;
    Label* m_position = nullptr;
    TextBox* m_search = nullptr;
    Button* m_select = nullptr;
};

VANTREL_SCREEN(Find);

} // namespace vantrel
