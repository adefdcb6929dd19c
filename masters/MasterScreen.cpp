#include "masters/MasterScreen.h"

#include "core/Host.h"
#include "core/KeyFilters.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "masters/Checks.h"

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

// Which buttons each state enables, in button order.
const QString kViewPattern = u"11111111001"_s;
const QString kEditingPattern = u"00000000110"_s;
const QString kEmptyPattern = u"00001000001"_s;

int at(MasterButton b) {
    return static_cast<int>(b);
}

} // namespace

void NameMessages(MasterDefinition& definition, const QString& subject, const QString& duplicate) {
    definition.empty = subject + u" Should Not be Empty."_s;
    definition.blank = subject + u" Should Not be Blank."_s;
    definition.duplicate = duplicate;
}

MasterDefinition StandardMaster(const QString& screen, const QString& table, const QString& key,
                                const QString& label, const QString& recordset, const QString& heading,
                                const QString& locate, const QString& title) {
    MasterDefinition d;
    d.screen = screen;
    d.table = table;
    d.key = key;
    d.label = label;
    d.nameColumn = u"Name"_s;
    d.recordset = recordset;
    d.locator = recordset;
    d.heading = heading;
    d.locate = locate;
    d.title = title;
    d.colours = u"Master"_s;
    d.nameBox = u"Txt_Name"_s;
    d.first = u"First "_s + label + u"."_s;
    d.last = u"Last "_s + label + u"."_s;
    d.deleteQuestion = u"Delete Current "_s + label + u" ?"_s;
    d.inUse = u"Can not Delete the "_s + label + u" in Use."_s;
    NameMessages(d, label + u" Description"_s, u"Duplicate "_s + label + u" Description."_s);
    d.added = label + u" Added."_s;
    d.updated = label + u" Updated."_s;
    d.deleteError = u"Error while Deleting the Selected "_s + label;
    d.buttons = {u"Cmd_Top"_s,  u"Cmd_Back"_s,   u"Cmd_Next"_s, u"Cmd_Last"_s, u"Cmd_New"_s, u"Cmd_Update"_s,
                 u"Cmd_Find"_s, u"Cmd_Delete"_s, u"Cmd_Save"_s, u"Cmd_Undo"_s, u"Cmd_Quit"_s};
    d.captions = {u"&Top"_s,  u"&Back"_s,   u"Ne&xt"_s, u"&Last"_s,   u"&New"_s, u"&Edit"_s,
                  u"&Find"_s, u"&Delete"_s, u"&Save"_s, u"&Cancel"_s, u"&Quit"_s};
    return d;
}

MasterScreen::MasterScreen(Process& process, MasterDefinition definition)
    : Screen(process, definition.screen), m_def(std::move(definition)) {
    colourFamily = m_def.colours;
    form = u"MasterScreen"_s;
    m_frame = &add<Label>(u"Fra_Name"_s, -1, ControlKind::Frame);
    m_frame->setCaption(m_def.label);
    m_name = &add<TextBox>(m_def.nameBox);
    m_name->keyFilter = [](int key, const QString& text, int selStart) {
        return KeyName(key, text, selStart);
    };
    m_name->onValidate = [this] { return nameLeave(); };

    const std::array<std::function<void()>, kMasterButtons> actions = {
        [this] { Top(); },  [this] { Back(); }, [this] { Next(); }, [this] { Last(); },
        [this] { New(); },  [this] { Edit(); }, [this] { Find(); }, [this] { Delete(); },
        [this] { Save(); }, [this] { Undo(); }, [this] { close(); }};
    for (int i = 0; i < kMasterButtons; ++i) {
        Control& b = m_def.buttonArray.isEmpty() ? static_cast<Control&>(add<Button>(m_def.buttons[i]))
                                                 : static_cast<Control&>(add<Button>(m_def.buttonArray, i));
        b.setCaption(m_def.captions[i]);
        b.onClick = actions[i];
        m_buttons[i] = &b;
    }
    // Cancel and Quit leave a box that would refuse to be left.
    m_buttons[at(MasterButton::Undo)]->setCausesValidation(false);
    m_buttons[at(MasterButton::Quit)]->setCausesValidation(false);
}

TextBox& MasterScreen::addTextField(const QString& control, const QString& column) {
    auto& box = add<TextBox>(control);
    m_fields.push_back({&box, column, {}, {}});
    return box;
}

CheckBox& MasterScreen::addFlagField(const QString& control, const QString& column) {
    auto& box = add<CheckBox>(control);
    m_fields.push_back({&box, column, {}, {}});
    return box;
}

ComboBox& MasterScreen::addComboField(const QString& control, const QString& column, const QString& statement,
                                      const QString& invalid) {
    auto& combo = add<ComboBox>(control);
    m_fields.push_back({&combo, column, statement, invalid});
    const size_t index = m_fields.size() - 1;
    combo.onValidate = [this, index] { return m_editMode == 0 || ComboKnown(m_fields[index]); };
    return combo;
}

bool MasterScreen::ComboKnown(const Bound& field) {
    if (ComboCode(static_cast<const ComboBox&>(*field.control)) >= 0)
        return true;
    prompter().stop(field.invalid);
    return false;
}

void MasterScreen::setDefinition(MasterDefinition definition) {
    m_def = std::move(definition);
    colourFamily = m_def.colours;
    m_frame->setCaption(m_def.label);
}

bool MasterScreen::IsValueTaken(const QString& column, const QString& value, qint64 code) {
    return db().exists(u"SELECT Code FROM %1 WHERE %2 = ? AND Code <> ?"_s.arg(m_def.table, column),
                       {value, code});
}

Control& MasterScreen::button(MasterButton which) const {
    return *m_buttons[at(which)];
}

qint64 MasterScreen::currentCode() const {
    if (m_position < 0 || m_position >= static_cast<int>(m_codes.size()))
        return 0;
    return m_codes[m_position];
}

void MasterScreen::load() {
    host().hourglass(true);
    // The fields of the screen come before its buttons when Enter moves on.
    for (Control* b : m_buttons)
        placeLast(*b);
    for (const Bound& field : m_fields) {
        if (!field.statement.isEmpty())
            FillCombo(db(), static_cast<ComboBox&>(*field.control), field.statement);
    }
    requery(0);
    if (m_codes.empty()) {
        enter(Mode::Empty);
    } else {
        goTo(static_cast<int>(m_codes.size()) - 1);
        enter(Mode::View);
    }
    host().hourglass(false);
}

void MasterScreen::activate() {
    host().setMainTitle(state().AppTitle + m_def.title);
    if (firstActivation() && !openingChecks())
        close();
}

void MasterScreen::requery(qint64 code) {
    m_codes.clear();
    for (const Row& row : db().select(m_def.recordset))
        m_codes.push_back(row.integer(u"Code"_s));
    m_position = m_codes.empty() ? -1 : 0;
    if (code != 0) {
        const auto it = std::find(m_codes.begin(), m_codes.end(), code);
        if (it != m_codes.end())
            m_position = static_cast<int>(it - m_codes.begin());
    }
}

void MasterScreen::goTo(int position) {
    m_position = position;
    showCurrent();
}

void MasterScreen::showCurrent() {
    const qint64 code = currentCode();
    std::optional<Row> row;
    if (code != 0)
        row = db().first(u"SELECT * FROM %1 WHERE Code = ?"_s.arg(m_def.table), {code});
    m_name->setText(row ? row->text(m_def.nameColumn) : QString());
    for (const Bound& field : m_fields) {
        if (auto* box = qobject_cast<TextBox*>(field.control))
            box->setText(row ? row->text(field.column) : QString());
        else if (auto* flag = qobject_cast<CheckBox*>(field.control))
            flag->setValue(row && row->flag(field.column));
        else
            ShowComboCode(static_cast<ComboBox&>(*field.control), row ? row->integer(field.column) : 0);
    }
    showFields(row ? &*row : nullptr);
}

void MasterScreen::enter(Mode mode) {
    const QString& pattern =
        mode == Mode::View ? kViewPattern : (mode == Mode::Editing ? kEditingPattern : kEmptyPattern);
    for (int i = 0; i < kMasterButtons; ++i)
        m_buttons[i]->setEnabled(pattern[i] == u'1');
    const bool editing = mode == Mode::Editing;
    m_name->setLocked(!editing);
    m_frame->setEnabled(mode != Mode::Empty);
    if (mode == Mode::Empty) {
        m_name->setText(QString());
        showFields(nullptr);
    }
    for (const Bound& field : m_fields) {
        if (auto* box = qobject_cast<TextBox*>(field.control))
            box->setLocked(!editing);
        else
            field.control->setEnabled(editing);
    }
    lockFields(editing);
}

void MasterScreen::Top() {
    goTo(0);
    prompter().info(m_def.first);
    setFocus(button(MasterButton::Next));
}

void MasterScreen::Last() {
    goTo(static_cast<int>(m_codes.size()) - 1);
    prompter().info(m_def.last);
    setFocus(button(MasterButton::Back));
}

void MasterScreen::Next() {
    if (m_position + 1 >= static_cast<int>(m_codes.size())) {
        prompter().info(m_def.last);
        setFocus(button(MasterButton::Back));
        goTo(static_cast<int>(m_codes.size()) - 1);
        return;
    }
    goTo(m_position + 1);
}

void MasterScreen::Back() {
    if (m_position <= 0) {
        prompter().info(m_def.first);
        setFocus(button(MasterButton::Next));
        goTo(0);
        return;
    }
    goTo(m_position - 1);
}

void MasterScreen::New() {
    m_editMode = 1;
    m_name->setText(QString());
    for (const Bound& field : m_fields) {
        if (auto* box = qobject_cast<TextBox*>(field.control))
            box->setText(QString());
        else if (auto* flag = qobject_cast<CheckBox*>(field.control))
            flag->setValue(false);
        else
            ShowComboCode(static_cast<ComboBox&>(*field.control), 0);
    }
    clearFields();
    enter(Mode::Editing);
    setFocus(*m_name);
}

void MasterScreen::Edit() {
    if (!mayEdit())
        return;
    m_editMode = 2;
    enter(Mode::Editing);
    setFocus(*m_name);
}

void MasterScreen::Undo() {
    m_editMode = 0;
    if (m_codes.empty()) {
        enter(Mode::Empty);
    } else {
        enter(Mode::View);
        showCurrent();
    }
    setFocus(button(MasterButton::New));
}

qint64 MasterScreen::locate() {
    ProcessState& s = state();
    s.SelectedCode = currentCode();
    s.ScratchSql = {m_def.locator, {}};
    // A master looks for a row to show: never a look-up only.
    s.QueryMode = false;
    process().openModal(u"Find"_s, [this](Screen& find) {
        find.setCaption(m_def.locate);
        if (Control* frame = find.control(u"Frame2"_s))
            frame->setCaption(m_def.heading);
    });
    return s.SelectedCode;
}

void MasterScreen::Find() {
    const qint64 code = locate();
    if (code == 0)
        return;
    const auto it = std::find(m_codes.begin(), m_codes.end(), code);
    if (it != m_codes.end())
        goTo(static_cast<int>(it - m_codes.begin()));
}

void MasterScreen::Delete() {
    if (!mayDelete())
        return;
    if (!prompter().ask(m_def.deleteQuestion))
        return;
    const qint64 code = currentCode();
    if (IsCodeInUse(state(), code, m_def.key)) {
        prompter().stop(m_def.inUse);
        return;
    }
    {
        Transaction tx(db());
        const bool done = deleteLinks(code) &&
                          db().execute(u"DELETE FROM %1 WHERE Code = ?"_s.arg(m_def.table), {code}) >= 0 &&
                          tx.commit();
        if (!done) {
            prompter().stop(m_def.deleteError);
            return;
        }
    }
    requery(0);
    if (m_codes.empty()) {
        enter(Mode::Empty);
    } else {
        goTo(0);
        enter(Mode::View);
    }
}

bool MasterScreen::nameLeave() {
    if (m_editMode != 1 && m_editMode != 2)
        return true;
    const QString name = m_name->text().trimmed();
    if (name.isEmpty()) {
        prompter().stop(m_def.blank);
        return false;
    }
    if (IsDuplicateName(state(), currentCode(), name, m_def.key, m_editMode, parentCode())) {
        prompter().stop(m_def.duplicate);
        return false;
    }
    return true;
}

void MasterScreen::Save() {
    const QString name = m_name->text().trimmed();
    if (name.isEmpty()) {
        prompter().stop(m_def.empty);
        setFocus(*m_name);
        return;
    }
    if (IsDuplicateName(state(), currentCode(), name, m_def.key, m_editMode, parentCode())) {
        prompter().stop(m_def.duplicate);
        setFocus(*m_name);
        return;
    }
    for (const Bound& field : m_fields) {
        if (!field.statement.isEmpty() && !ComboKnown(field)) {
            setFocus(*field.control);
            return;
        }
    }
    if (!validateFields())
        return;

    std::vector<std::pair<QString, QVariant>> columns{{m_def.nameColumn, name}};
    columns.insert(columns.end(), m_def.fixedColumns.begin(), m_def.fixedColumns.end());
    for (const Bound& field : m_fields) {
        if (auto* box = qobject_cast<TextBox*>(field.control))
            columns.emplace_back(field.column, box->text().trimmed());
        else if (auto* flag = qobject_cast<CheckBox*>(field.control))
            columns.emplace_back(field.column, flag->value() ? 1 : 0);
        else
            columns.emplace_back(
                field.column, std::max<qint64>(ComboCode(static_cast<const ComboBox&>(*field.control)), 0));
    }
    writeFields(columns);
    QStringList names;
    QVariantList values;
    for (const auto& [column, value] : columns) {
        names << column;
        // A blank text is stored as an empty text, never as Null.
        const bool nullText = value.typeId() == QMetaType::QString && value.toString().isNull();
        values << (nullText ? QVariant(u""_s) : value);
    }

    qint64 code = m_editMode == 1 ? 0 : currentCode();
    bool done = false;
    QString error;
    {
        Transaction tx(db());
        if (m_editMode == 1) {
            QStringList marks;
            for (int i = 0; i < names.size(); ++i)
                marks << u"?"_s;
            done = db().execute(u"INSERT INTO %1 (%2) VALUES (%3)"_s.arg(m_def.table, names.join(u", "_s),
                                                                         marks.join(u", "_s)),
                                values) >= 0;
            code = done ? db().lastInsertId() : 0;
        } else {
            QStringList sets;
            for (const QString& column : names)
                sets << column + u" = ?"_s;
            values << code;
            done = db().execute(u"UPDATE %1 SET %2 WHERE Code = ?"_s.arg(m_def.table, sets.join(u", "_s)),
                                values) >= 0;
        }
        done = done && writeLinks(code) && tx.commit();
        if (!done)
            error = db().lastError();
    }
    if (!done) {
        prompter().stop(u"Error While Saving "_s + error);
        return;
    }
    state().SelectedCode = code;
    requery(code);
    showCurrent();
    enter(Mode::View);
    prompter().info(m_editMode == 1 ? m_def.added : m_def.updated);
    setFocus(button(MasterButton::New));
    m_editMode = 0;
}

} // namespace vantrel
