#include "core/Controls.h"

#include "core/Screen.h"

using namespace Qt::StringLiterals;

namespace vantrel {

Control::Control(Screen& screen, ControlKind kind, const QString& name, int index)
    : m_screen(screen), m_kind(kind), m_name(name), m_index(index) {}

QString Control::fullName() const {
    return m_index < 0 ? m_name : u"%1(%2)"_s.arg(m_name).arg(m_index);
}

void Control::setEnabled(bool on) {
    if (m_enabled != on) {
        m_enabled = on;
        notify();
    }
}

void Control::setVisible(bool on) {
    if (m_visible != on) {
        m_visible = on;
        notify();
    }
}

void Control::setCaption(const QString& caption) {
    if (m_caption != caption) {
        m_caption = caption;
        notify();
    }
}

bool Control::canTakeFocus() const {
    switch (m_kind) {
    case ControlKind::Label:
    case ControlKind::Frame:
    case ControlKind::Image:
        return false;
    default:
        return m_enabled && m_visible;
    }
}

TextBox::TextBox(Screen& screen, const QString& name, int index)
    : Control(screen, ControlKind::TextBox, name, index) {}

void TextBox::setText(const QString& text) {
    const QString limited = m_maxLength > 0 ? text.left(m_maxLength) : text;
    m_cursor = static_cast<int>(limited.size());
    if (m_text == limited)
        return;
    m_text = limited;
    notify();
    if (onChange)
        onChange();
}

void TextBox::setLocked(bool on) {
    if (m_locked != on) {
        m_locked = on;
        notify();
    }
}

void TextBox::insert(QChar c) {
    if (m_maxLength > 0 && m_text.size() >= m_maxLength)
        return;
    m_text.insert(m_cursor, c);
    ++m_cursor;
    notify();
    if (onChange)
        onChange();
}

void TextBox::backspace() {
    if (m_cursor == 0)
        return;
    m_text.remove(m_cursor - 1, 1);
    --m_cursor;
    notify();
    if (onChange)
        onChange();
}

CheckBox::CheckBox(Screen& screen, const QString& name, int index)
    : Control(screen, ControlKind::CheckBox, name, index) {}

void CheckBox::setValue(bool on) {
    if (m_value != on) {
        m_value = on;
        notify();
    }
}

OptionButton::OptionButton(Screen& screen, const QString& name, int index)
    : Control(screen, ControlKind::Option, name, index) {}

void OptionButton::setValue(bool on) {
    if (m_value == on)
        return;
    m_value = on;
    notify();
    if (!on)
        return;
    for (Control* other : screen().controls()) {
        auto* option = qobject_cast<OptionButton*>(other);
        if (option && option != this && option->group == group)
            option->setValue(false);
    }
}

Button::Button(Screen& screen, const QString& name, int index)
    : Control(screen, ControlKind::Button, name, index) {}

Label::Label(Screen& screen, const QString& name, int index, ControlKind kind)
    : Control(screen, kind, name, index) {
    setTabStop(false);
}

ImageBox::ImageBox(Screen& screen, const QString& name, int index)
    : Control(screen, ControlKind::Image, name, index) {
    setTabStop(false);
}

void ImageBox::setResource(const QString& resource) {
    if (m_resource != resource) {
        m_resource = resource;
        notify();
    }
}

DateBox::DateBox(Screen& screen, const QString& name, int index)
    : Control(screen, ControlKind::DateBox, name, index) {}

void DateBox::setDate(const QDate& date) {
    if (m_date == date)
        return;
    m_date = date;
    notify();
    if (onChange)
        onChange();
}

QString DateBox::text() const {
    return m_date.isValid() ? m_date.toString(u"dd-MMM-yyyy"_s) : QString();
}

ListControl::ListControl(Screen& screen, ControlKind kind, const QString& name, int index)
    : Control(screen, kind, name, index) {}

void ListControl::setRows(std::vector<ListRow> rows) {
    m_rows = std::move(rows);
    m_current = -1;
    notify();
}

void ListControl::setCurrent(int row) {
    const int target = (row >= 0 && row < count()) ? row : -1;
    if (m_current != target) {
        m_current = target;
        notify();
    }
}

QVariant ListControl::currentCode() const {
    return m_current >= 0 ? m_rows.at(m_current).code : QVariant();
}

int ListControl::findRow(const QStringList& values) const {
    for (int r = 0; r < count(); ++r) {
        const QStringList& columns = m_rows.at(r).columns;
        bool match = values.size() <= columns.size();
        for (int c = 0; match && c < values.size(); ++c)
            match = columns.at(c).startsWith(values.at(c), Qt::CaseInsensitive);
        if (match)
            return r;
    }
    return -1;
}

int ListControl::findCode(const QVariant& code) const {
    for (int r = 0; r < count(); ++r) {
        if (m_rows.at(r).code == code)
            return r;
    }
    return -1;
}

void ListControl::setTicked(int row, bool on) {
    if (row >= 0 && row < count() && m_rows.at(row).ticked != on) {
        m_rows[row].ticked = on;
        notify();
    }
}

ComboBox::ComboBox(Screen& screen, const QString& name, int index)
    : ListControl(screen, ControlKind::Combo, name, index) {}

void ComboBox::setText(const QString& text) {
    if (m_text == text)
        return;
    m_text = text;
    notify();
    if (onChange)
        onChange();
}

void ComboBox::choose(int row) {
    setCurrent(row);
    setText(row >= 0 ? m_rows.at(row).columns.value(0) : QString());
    if (onClick)
        onClick();
}

ListBox::ListBox(Screen& screen, const QString& name, int index)
    : ListControl(screen, ControlKind::List, name, index) {}

TabStrip::TabStrip(Screen& screen, const QString& name, int index)
    : Control(screen, ControlKind::TabStrip, name, index) {}

bool TabStrip::change(int page) {
    if (page == m_current)
        return true;
    if (guard && !guard(page))
        return false;
    setCurrent(page);
    if (onClick)
        onClick();
    return true;
}

void TabStrip::setCurrent(int page) {
    if (m_current != page) {
        m_current = page;
        notify();
    }
}

} // namespace vantrel
