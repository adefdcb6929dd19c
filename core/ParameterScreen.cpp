#include "core/ParameterScreen.h"

#include "core/Host.h"
#include "core/Lookup.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "core/Startup.h"

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

// "TxtControl(3)" names element 3 of the array TxtControl.
std::pair<QString, int> ControlName(const QString& name) {
    if (!name.endsWith(u')'))
        return {name, -1};
    const qsizetype open = name.indexOf(u'(');
    return {name.left(open), name.mid(open + 1, name.size() - open - 2).toInt()};
}

KeyResult Digits(int key, const QString&, int) {
    if (key < 32 || (key >= '0' && key <= '9'))
        return {key, false};
    return {0, true};
}

} // namespace

std::vector<ParameterScreen::Colour> ParameterScreen::Sections(const QStringList& first,
                                                               const QStringList& firstCaptions,
                                                               const QStringList& second,
                                                               const QStringList& secondCaptions) {
    std::vector<Colour> colours;
    for (int i = 0; i < first.size(); ++i)
        colours.push_back({u"Opt_Mst"_s, i, first[i], firstCaptions[i]});
    for (int i = 0; i < second.size(); ++i)
        colours.push_back({u"Opt_Pre"_s, i, second[i], secondCaptions[i]});
    return colours;
}

ParameterScreen::ParameterScreen(Process& owner, const QString& name, std::vector<Field> fields,
                                 std::vector<Colour> colours, const QString& schedulerColumn, int tabCount)
    : Screen(owner, name), m_fields(std::move(fields)), m_colours(std::move(colours)),
      m_scheduler(schedulerColumn) {
    colourFamily = u"Utility"_s;
    m_tabs = &add<TabStrip>(u"SSTab1"_s);
    m_tabs->guard = [this, tabCount](int page) {
        return page == 0 || page >= tabCount || ControlAccess || Verify();
    };

    for (const Colour& colour : m_colours) {
        auto& option = add<OptionButton>(colour.option, colour.index);
        option.group = u"Colour"_s;
        option.setCaption(colour.caption);
        option.placeOnTab(u"SSTab1"_s, 0);
        option.onClick = [this, &colour] {
            m_currentColour = &colour;
            ShowColour();
        };
    }
    for (const QString& box : {u"TxtForeColour"_s, u"TxtBackColour"_s}) {
        auto& text = add<TextBox>(box);
        text.setMaxLength(8);
        text.keyFilter = Digits;
        text.placeOnTab(u"SSTab1"_s, 0);
        text.onChange = [this, &text, box] {
            if (m_currentColour)
                m_colourValues[m_currentColour->family +
                               (box == u"TxtForeColour"_s ? u"Fore"_s : u"Back"_s)] = text.text();
        };
    }

    for (const Field& field : m_fields) {
        const auto [control, index] = ControlName(field.control);
        Control* c = nullptr;
        switch (field.kind) {
        case Kind::Text:
            c = &add<TextBox>(control, index);
            break;
        case Kind::Shown: {
            auto& box = add<TextBox>(control, index);
            box.setLocked(true);
            c = &box;
            break;
        }
        case Kind::Number: {
            auto& box = add<TextBox>(control, index);
            box.setMaxLength(field.width);
            box.keyFilter = Digits;
            c = &box;
            break;
        }
        case Kind::Flag:
            c = &add<CheckBox>(control, index);
            break;
        case Kind::Combo: {
            auto& combo = add<ComboBox>(control, index);
            combo.editable = false;
            // Enter stays in a combo.
            combo.onKeyPress = [](int key) -> KeyResult { return {key == 13 ? 0 : key, false}; };
            c = &combo;
            break;
        }
        }
        c->setCaption(field.caption);
        c->placeOnTab(u"SSTab1"_s, field.page);
    }

    auto button = [this](const QString& name, const QString& caption, int page,
                         std::function<void()> action) {
        auto& b = add<Button>(name);
        b.setCaption(caption);
        if (page >= 0)
            b.placeOnTab(u"SSTab1"_s, page);
        b.onClick = std::move(action);
        return &b;
    };
    button(u"Cmd_Pwd"_s, u"Change Login Password"_s, 0, [this] { ChangePassword(u"L"_s); });
    button(u"Cmd_PwdCtl"_s, u"Change Control Password"_s, 0, [this] { ChangePassword(u"C"_s); });
    button(u"Cmd_Sch"_s, u"&Turn On Scheduler"_s, 0, [this] {
        m_schedulerOn = !m_schedulerOn;
        control(u"Cmd_Sch"_s)->setCaption(m_schedulerOn ? u"&Turn Off Scheduler"_s : u"&Turn On Scheduler"_s);
    });
    button(u"Cmd_Admin"_s, u"Change Admin Password"_s, 0, [this] {
        ChangePassword(u"A"_s);
    })->setVisible(state().AdminLogin);
    button(u"Cmd_Ok"_s, u"&Ok"_s, -1, [this] { Ok(); });
    button(u"Cmd_Apply"_s, u"&Apply"_s, -1, [this] { Apply(); });
    button(u"Cmd_Undo"_s, u"&Cancel"_s, -1, [this] { close(); })->setCausesValidation(false);
}

void ParameterScreen::load() {
    for (const Field& field : m_fields) {
        if (field.kind == Kind::Combo) {
            const auto [name, index] = ControlName(field.control);
            FillCombo(db(), static_cast<ComboBox&>(*control(name, index)), field.statement);
        }
    }
    const Row row = db().first(u"SELECT * FROM Control LIMIT 1"_s).value_or(Row());
    for (const Field& field : m_fields) {
        const auto [name, index] = ControlName(field.control);
        Control& c = *control(name, index);
        switch (field.kind) {
        case Kind::Text:
        case Kind::Shown:
            static_cast<TextBox&>(c).setText(row.text(field.column));
            break;
        case Kind::Number:
            static_cast<TextBox&>(c).setText(QString::number(row.real(field.column), 'f', 0));
            break;
        case Kind::Flag:
            static_cast<CheckBox&>(c).setValue(row.flag(field.column));
            break;
        case Kind::Combo:
            ShowComboCode(static_cast<ComboBox&>(c), row.integer(field.column));
            break;
        }
    }
    for (const Colour& colour : m_colours) {
        for (const QString& part : {u"Fore"_s, u"Back"_s})
            m_colourValues[colour.family + part] = row.text(colour.family + part);
    }
    if (!m_colours.empty()) {
        m_currentColour = &m_colours.front();
        static_cast<OptionButton&>(*control(m_currentColour->option, m_currentColour->index)).setValue(true);
        ShowColour();
    }
    m_schedulerOn = row.flag(m_scheduler);
    control(u"Cmd_Sch"_s)->setCaption(m_schedulerOn ? u"&Turn Off Scheduler"_s : u"&Turn On Scheduler"_s);
    m_firstRun = !row.flag(u"UserProfileUpdated"_s);
    ControlAccess = m_firstRun;
    m_tabs->setCurrent(m_firstRun ? m_tabs->tabs.size() - 1 : 0);
    afterLoad(row);
}

void ParameterScreen::activate() {
    if (!firstActivation())
        return;
    host().setMainTitle(state().AppTitle + u"   [Control Parameters]"_s);
    if (!db().exists(u"SELECT Code FROM City"_s)) {
        prompter().stop(u"No City Is Defined In City Master"_s);
        close();
        return;
    }
    // The screen opens with the focus on the first field of the tab it shows, never behind a protected tab.
    for (Control* c : controls()) {
        if (!focus() && c->tabStrip() == m_tabs->name() && c->tabPage() == m_tabs->current() &&
            c->tabStop() && c->canTakeFocus())
            setFocus(*c);
    }
}

void ParameterScreen::ShowColour() {
    auto& fore = static_cast<TextBox&>(*control(u"TxtForeColour"_s));
    auto& back = static_cast<TextBox&>(*control(u"TxtBackColour"_s));
    const Colour* colour = m_currentColour;
    m_currentColour = nullptr;
    fore.setText(m_colourValues[colour->family + u"Fore"_s]);
    back.setText(m_colourValues[colour->family + u"Back"_s]);
    m_currentColour = colour;
}

QString ParameterScreen::Value(const QString& column) const {
    for (const Field& field : m_fields) {
        if (field.column.compare(column, Qt::CaseInsensitive) != 0)
            continue;
        const auto [name, index] = ControlName(field.control);
        const Control& c = *control(name, index);
        switch (field.kind) {
        case Kind::Text:
        case Kind::Shown:
        case Kind::Number:
            return static_cast<const TextBox&>(c).text().trimmed();
        case Kind::Flag:
            return static_cast<const CheckBox&>(c).value() ? u"1"_s : u"0"_s;
        case Kind::Combo:
            return QString::number(std::max<qint64>(ComboCode(static_cast<const ComboBox&>(c)), 0));
        }
    }
    return {};
}

bool ParameterScreen::Write() {
    std::vector<std::pair<QString, QVariant>> columns;
    for (const Field& field : m_fields) {
        const QString value = Value(field.column);
        switch (field.kind) {
        case Kind::Shown:
            break;
        case Kind::Text:
            columns.emplace_back(field.column, value);
            break;
        case Kind::Number:
            columns.emplace_back(field.column, value.toDouble());
            break;
        case Kind::Flag:
        case Kind::Combo:
            columns.emplace_back(field.column, value.toLongLong());
            break;
        }
    }
    for (const auto& [column, value] : m_colourValues)
        columns.emplace_back(column, value);
    columns.emplace_back(m_scheduler, m_schedulerOn ? 1 : 0);
    writeMore(columns);
    QStringList sets;
    QVariantList values;
    for (const auto& [column, value] : columns) {
        sets << column + u" = ?"_s;
        values << value;
    }
    QString error;
    bool written = false;
    {
        Transaction transaction(db());
        written = db().execute(u"UPDATE Control SET "_s + sets.join(u", "_s), values) >= 0 && afterWrite() &&
                  transaction.commit();
        if (!written)
            error = db().lastError();
    }
    if (!written)
        prompter().stop(error);
    return written;
}

void ParameterScreen::Ok() {
    if (Write())
        close();
}

void ParameterScreen::Apply() {
    if (!Write())
        return;
    LoadControlParameters(process());
    Q_EMIT repaint();
}

void ParameterScreen::ChangePassword(const QString& action) {
    process().openModal(u"FrmChangePassword"_s,
                        [action](Screen& s) { s.inputs.insert(u"PasswordAction"_s, action); });
}

bool ParameterScreen::Verify() {
    process().openModal(
        u"FrmChangePassword"_s, [](Screen& s) { s.inputs.insert(u"PasswordAction"_s, u"V"_s); },
        [this](Screen& s) { ControlAccess = s.outputs.value(u"ControlAccess"_s).toBool(); });
    if (!ControlAccess)
        m_tabs->setCurrent(0);
    return ControlAccess;
}

} // namespace vantrel
