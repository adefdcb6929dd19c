#include "core/Screen.h"

#include <algorithm>

#include "core/Host.h"
#include "core/Process.h"
#include "core/Prompter.h"

using namespace Qt::StringLiterals;

namespace vantrel {

Screen::Screen(Process& process, const QString& name) : m_process(process), m_name(name) {}

Screen::~Screen() = default;

ProcessState& Screen::state() const {
    return m_process.state;
}
Database& Screen::db() const {
    return m_process.state.OpenDb;
}
Prompter& Screen::prompter() const {
    return m_process.prompter;
}
Host& Screen::host() const {
    return m_process.host;
}

void Screen::setCaption(const QString& caption) {
    if (m_caption != caption) {
        m_caption = caption;
        Q_EMIT changed();
    }
}

void Screen::activated() {
    ++m_activations;
    activate();
}

void Screen::close() {
    if (!m_closed)
        m_process.closeScreen(*this);
}

void Screen::placeLast(Control& control) {
    const auto it =
        std::find_if(m_controls.begin(), m_controls.end(),
                     [&control](const std::unique_ptr<Control>& c) { return c.get() == &control; });
    if (it == m_controls.end())
        return;
    std::unique_ptr<Control> moved = std::move(*it);
    m_controls.erase(it);
    m_controls.push_back(std::move(moved));
}

Control* Screen::control(const QString& name, int index) const {
    for (const auto& c : m_controls) {
        if (c->index() == index && c->name().compare(name, Qt::CaseInsensitive) == 0)
            return c.get();
    }
    return nullptr;
}

std::vector<Control*> Screen::array(const QString& name) const {
    std::vector<Control*> elements;
    for (const auto& c : m_controls) {
        if (c->index() >= 0 && c->name().compare(name, Qt::CaseInsensitive) == 0)
            elements.push_back(c.get());
    }
    std::sort(elements.begin(), elements.end(),
              [](Control* a, Control* b) { return a->index() < b->index(); });
    return elements;
}

std::vector<Control*> Screen::controls() const {
    std::vector<Control*> all;
    all.reserve(m_controls.size());
    for (const auto& c : m_controls)
        all.push_back(c.get());
    return all;
}

void Screen::applyMask(const QString& arrayName, const QString& mask) {
    const std::vector<Control*> elements = array(arrayName);
    for (size_t i = 0; i < elements.size() && i < static_cast<size_t>(mask.size()); ++i)
        elements[i]->setEnabled(mask.at(static_cast<qsizetype>(i)) == u'1');
}

QString Screen::mask(const QString& arrayName) const {
    QString text;
    for (Control* c : array(arrayName))
        text.append(c->enabled() ? u'1' : u'0');
    return text;
}

void Screen::setFocus(Control& control) {
    if (m_focus != &control) {
        m_focus = &control;
        Q_EMIT changed();
    }
}

void Screen::setFocus(const QString& name, int index) {
    if (Control* c = control(name, index))
        setFocus(*c);
}

bool Screen::moveFocus(Control* target) {
    Control* from = m_focus;
    if (from == target)
        return true;
    if (target && !target->tabStrip().isEmpty()) {
        auto* strip = qobject_cast<TabStrip*>(control(target->tabStrip()));
        if (strip && strip->current() != target->tabPage() && !changeTab(*strip, target->tabPage()))
            return false;
    }
    if (from) {
        if (auto* grid = qobject_cast<Grid*>(from); grid && !grid->leave())
            return false;
        if (from->onValidate && !from->onValidate())
            return false;
    }
    m_focus = target;
    Q_EMIT changed();
    if (from && from->onLostFocus)
        from->onLostFocus();
    if (target && m_focus == target && target->onGotFocus)
        target->onGotFocus();
    return true;
}

bool Screen::leave(Control& control) {
    if (m_focus != &control)
        return true;
    return moveFocus(nullptr);
}

bool Screen::focusNext() {
    const std::vector<Control*> all = controls();
    auto it = std::find(all.begin(), all.end(), m_focus);
    const size_t start = it == all.end() ? 0 : static_cast<size_t>(it - all.begin()) + 1;
    for (size_t step = 0; step < all.size(); ++step) {
        Control* c = all[(start + step) % all.size()];
        if (c != m_focus && c->tabStop() && c->canTakeFocus())
            return moveFocus(c);
    }
    return true;
}

bool Screen::type(Control& control, const QString& text) {
    if (!moveFocus(&control))
        return false;
    for (QChar ch : text) {
        if (!deliverKey(control, ch.unicode()))
            return false;
    }
    return true;
}

bool Screen::paste(Control& control, const QString& text) {
    if (!moveFocus(&control))
        return false;
    if (auto* box = qobject_cast<TextBox*>(&control))
        box->setText(text);
    else if (auto* combo = qobject_cast<ComboBox*>(&control))
        combo->setText(text);
    return true;
}

bool Screen::deliverKey(Control& control, int key) {
    auto* box = qobject_cast<TextBox*>(&control);
    if (box && box->keyFilter) {
        const KeyResult filtered = box->keyFilter(key, box->text(), box->cursor());
        if (filtered.beep)
            prompter().beep();
        key = filtered.key;
    }
    if (key != 0 && control.onKeyPress) {
        const KeyResult handled = control.onKeyPress(key);
        if (handled.beep)
            prompter().beep();
        key = handled.key;
    }
    if (key == 0 || m_focus != &control)
        return true;
    if (key == 13) {
        if (box && box->multiLine() && !enterAsTab)
            box->insert(u'\n');
        else if (enterAsTab)
            return focusNext();
        return true;
    }
    if (key == 27 || key == 9)
        return true;
    if (key == 10) {
        if (box && box->multiLine())
            box->insert(u'\n');
        return true;
    }
    if (key == 8) {
        if (box && !box->locked())
            box->backspace();
        return true;
    }
    if (box && !box->locked())
        box->insert(QChar(key));
    else if (auto* combo = qobject_cast<ComboBox*>(&control); combo && combo->editable)
        combo->setText(combo->text() + QChar(key));
    return true;
}

bool Screen::pressKey(Control& control, Key key, QChar character) {
    if (!moveFocus(&control))
        return false;
    if (control.onKeyDown && key != Key::Character && control.onKeyDown(key))
        return true;
    switch (key) {
    case Key::Character:
        return deliverKey(control, character.unicode());
    case Key::Enter:
        return deliverKey(control, 13);
    case Key::CtrlEnter:
        return deliverKey(control, 10);
    case Key::Escape:
        return deliverKey(control, 27);
    case Key::Backspace:
        return deliverKey(control, 8);
    case Key::Tab:
        return focusNext();
    default:
        return true;
    }
}

bool Screen::click(Control& control) {
    if (!control.enabled() || !control.visible())
        return false;
    if (control.causesValidation() && control.canTakeFocus() && !moveFocus(&control))
        return false;
    switch (control.kind()) {
    case ControlKind::CheckBox: {
        auto& box = static_cast<CheckBox&>(control);
        box.setValue(!box.value());
        break;
    }
    case ControlKind::Option:
        static_cast<OptionButton&>(control).setValue(true);
        break;
    default:
        break;
    }
    if (control.onClick)
        control.onClick();
    return true;
}

bool Screen::choose(ComboBox& combo, const QStringList& values) {
    if (!moveFocus(&combo))
        return false;
    const int row = combo.findRow(values);
    if (row < 0)
        return false;
    combo.choose(row);
    return true;
}

bool Screen::changeTab(TabStrip& strip, int page) {
    return strip.change(page);
}

} // namespace vantrel
