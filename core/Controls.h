#pragma once

#include "core/KeyFilters.h"

#include <QDate>
#include <QImage>
#include <QObject>
#include <QString>
#include <QStringList>
#include <QVariant>
#include <algorithm>
#include <functional>
#include <vector>

namespace vantrel {

class Screen;

enum class ControlKind {
    TextBox,
    CheckBox,
    Option,
    Combo,
    List,
    Button,
    DateBox,
    TabStrip,
    Grid,
    Label,
    Frame,
    Image
};

// Keys as the screens see them: printable characters and the control characters by their codes
// (8 Backspace, 9 Tab, 10 Ctrl+Enter, 13 Enter, 27 Escape), the others as named keys.
enum class Key { Character, Enter, CtrlEnter, Escape, Tab, Up, Down, F2, F3, Delete, Backspace };

// A named control of a screen. The screen logic keeps all its state here; the widgets only show it.
class Control : public QObject {
    Q_OBJECT
public:
    Control(Screen& screen, ControlKind kind, const QString& name, int index);

    Screen& screen() const { return m_screen; }
    ControlKind kind() const { return m_kind; }
    const QString& name() const { return m_name; }
    int index() const { return m_index; }
    // "Name" or "Name(3)" for an element of a control array.
    QString fullName() const;

    bool enabled() const { return m_enabled; }
    void setEnabled(bool on);
    bool visible() const { return m_visible; }
    void setVisible(bool on);
    const QString& caption() const { return m_caption; }
    void setCaption(const QString& caption);
    // Whether the control can take the focus by Tab or Enter.
    bool tabStop() const { return m_tabStop; }
    void setTabStop(bool on) { m_tabStop = on; }
    // A button that does not cause validation takes a click without the focus leaving the current control.
    bool causesValidation() const { return m_causesValidation; }
    void setCausesValidation(bool on) { m_causesValidation = on; }
    // The page of a tab strip the control stands on, if any.
    void placeOnTab(const QString& tabStrip, int page) {
        m_tabStrip = tabStrip;
        m_tabPage = page;
    }
    const QString& tabStrip() const { return m_tabStrip; }
    int tabPage() const { return m_tabPage; }
    bool canTakeFocus() const;

    // Rules and handlers, set by the screen logic.
    std::function<bool()> onValidate; // leaving the control: false keeps the focus here
    std::function<void()> onLostFocus;
    std::function<void()> onGotFocus;
    std::function<void()> onClick;
    // The mouse passes over the control (true) or moves off it (false).
    std::function<void(bool over)> onHover;
    std::function<void()> onChange;
    // A key as it arrives: returns the key to deliver, or 0 to drop it (with a beep when asked).
    std::function<KeyResult(int key)> onKeyPress;
    // A key that is not a character (arrows, function keys): true when the screen handled it.
    std::function<bool(Key key)> onKeyDown;

Q_SIGNALS:
    void changed();

protected:
    void notify() { Q_EMIT changed(); }

private:
    Screen& m_screen;
    ControlKind m_kind;
    QString m_name;
    int m_index;
    bool m_enabled = true;
    bool m_visible = true;
    bool m_tabStop = true;
    bool m_causesValidation = true;
    QString m_caption;
    QString m_tabStrip;
    int m_tabPage = -1;
};

class TextBox : public Control {
    Q_OBJECT
public:
    TextBox(Screen& screen, const QString& name, int index = -1);

    const QString& text() const { return m_text; }
    // Replaces the text whole, as the program or a paste does; the change handler runs.
    void setText(const QString& text);
    bool locked() const { return m_locked; }
    void setLocked(bool on);
    int maxLength() const { return m_maxLength; }
    void setMaxLength(int length) { m_maxLength = length; }
    bool multiLine() const { return m_multiLine; }
    void setMultiLine(bool on) { m_multiLine = on; }
    int cursor() const { return m_cursor; }
    void setCursor(int position) { m_cursor = std::clamp(position, 0, static_cast<int>(m_text.size())); }
    // Inserts one delivered character at the cursor, within the maximum length.
    void insert(QChar c);
    void backspace();

    // The key filter of the box, run before onKeyPress: a routine of the shared key filters.
    std::function<KeyResult(int key, const QString& text, int selStart)> keyFilter;

private:
    QString m_text;
    bool m_locked = false;
    int m_maxLength = 0;
    bool m_multiLine = false;
    int m_cursor = 0;
};

class CheckBox : public Control {
    Q_OBJECT
public:
    CheckBox(Screen& screen, const QString& name, int index = -1);
    bool value() const { return m_value; }
    void setValue(bool on);

private:
    bool m_value = false;
};

// An option button: ticking one clears the others of its group.
class OptionButton : public Control {
    Q_OBJECT
public:
    OptionButton(Screen& screen, const QString& name, int index = -1);
    bool value() const { return m_value; }
    void setValue(bool on);
    QString group;

private:
    bool m_value = false;
};

class Button : public Control {
    Q_OBJECT
public:
    Button(Screen& screen, const QString& name, int index = -1);
};

// The colour a label is painted in to tell a class at a glance, as the safety panels do.
enum class Tone { None, Safe, Unsafe, Uncertain, Careful, Adjust };

class Label : public Control {
    Q_OBJECT
public:
    Label(Screen& screen, const QString& name, int index = -1, ControlKind kind = ControlKind::Label);
    const QString& text() const { return caption(); }
    void setText(const QString& text) { setCaption(text); }
    bool rich() const { return m_rich; }
    void setRich(bool on) { m_rich = on; }
    Tone tone() const { return m_tone; }
    void setTone(Tone tone) {
        if (m_tone != tone) {
            m_tone = tone;
            notify();
        }
    }

private:
    bool m_rich = false;
    Tone m_tone = Tone::None;
};

class ImageBox : public Control {
    Q_OBJECT
public:
    ImageBox(Screen& screen, const QString& name, int index = -1);
    const QString& resource() const { return m_resource; }
    // The picture: a file path or a resource of the program.
    void setResource(const QString& resource);

private:
    QString m_resource;
};

class DateBox : public Control {
    Q_OBJECT
public:
    DateBox(Screen& screen, const QString& name, int index = -1);
    QDate date() const { return m_date; }
    void setDate(const QDate& date);
    // "DD-MMM-YYYY", or "" when the box holds no date.
    QString text() const;

private:
    QDate m_date;
};

// One row of a combo, list or drop-down: a code and the displayed columns.
struct ListRow {
    QVariant code;
    QStringList columns;
    bool ticked = false;
};

class ListControl : public Control {
    Q_OBJECT
public:
    ListControl(Screen& screen, ControlKind kind, const QString& name, int index = -1);

    const std::vector<ListRow>& rows() const { return m_rows; }
    void setRows(std::vector<ListRow> rows);
    void clear() { setRows({}); }
    int count() const { return static_cast<int>(m_rows.size()); }
    // The current row, or -1.
    int current() const { return m_current; }
    void setCurrent(int row);
    QVariant currentCode() const;
    // The first row whose displayed columns begin with these values (compared without case), or -1.
    int findRow(const QStringList& values) const;
    int findCode(const QVariant& code) const;
    void setTicked(int row, bool on);
    QStringList columnHeadings;

protected:
    std::vector<ListRow> m_rows;
    int m_current = -1;
};

// A combo: a list of rows and a text. With mustBeInList the text must name a row when left.
class ComboBox : public ListControl {
    Q_OBJECT
public:
    ComboBox(Screen& screen, const QString& name, int index = -1);
    const QString& text() const { return m_text; }
    void setText(const QString& text);
    // The person's pick of a row: the row becomes current, its first column the text; the click runs.
    void choose(int row);
    bool editable = true;

private:
    QString m_text;
};

class ListBox : public ListControl {
    Q_OBJECT
public:
    ListBox(Screen& screen, const QString& name, int index = -1);
    bool checkBoxes = false;
};

class TabStrip : public Control {
    Q_OBJECT
public:
    TabStrip(Screen& screen, const QString& name, int index = -1);
    int current() const { return m_current; }
    // A change of tab by the person: the guard may refuse it.
    bool change(int page);
    // A change made by the program.
    void setCurrent(int page);
    QStringList tabs;
    std::function<bool(int page)> guard;

private:
    int m_current = 0;
};

} // namespace vantrel
