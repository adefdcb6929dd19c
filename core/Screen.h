#pragma once

#include "core/Controls.h"
#include "core/Grid.h"

#include <QObject>
#include <QVariantMap>
#include <memory>
#include <optional>
#include <vector>

namespace vantrel {

class Process;
struct ProcessState;
class Database;
class Host;
class Prompter;

// A screen of the system: its controls, addressed by the system's names, and its logic. It talks to the
// person only through the prompter and opens other screens only through the process.
class Screen : public QObject {
    Q_OBJECT
public:
    Screen(Process& process, const QString& name);
    ~Screen() override;

    const QString& name() const { return m_name; }
    Process& process() const { return m_process; }
    ProcessState& state() const;
    Database& db() const;
    Prompter& prompter() const;
    Host& host() const;

    // The caption of the screen's own window.
    const QString& caption() const { return m_caption; }
    void setCaption(const QString& caption);
    // The family whose colours the screen takes ("Master", "Utility", ...); empty for none.
    QString colourFamily;
    // Enter acts as Tab on the screen.
    bool enterAsTab = true;
    // The screen was opened as a modal dialog.
    bool modal = false;
    // The form the screen is drawn with when it is not named after the screen: one form serves a family.
    QString form;

    // Life of the screen, called by the process.
    virtual void load() {}
    // Each time the screen becomes the active one; firstActivation() tells the first time.
    virtual void activate() {}
    // A close request from the window's close box or the system: false refuses it.
    virtual bool queryClose() { return true; }
    virtual void unload() {}
    bool firstActivation() const { return m_activations == 1; }
    void activated();

    // The screen closes itself.
    void close();
    bool isClosed() const { return m_closed; }
    void markClosed() { m_closed = true; }

    // Controls.
    template <class T, class... Args> T& add(const QString& name, Args&&... args) {
        auto control = std::make_unique<T>(*this, name, std::forward<Args>(args)...);
        T& ref = *control;
        m_controls.push_back(std::move(control));
        Q_EMIT controlAdded(&ref);
        return ref;
    }
    Control* control(const QString& name, int index = -1) const;
    // Puts a control last in the order Enter and Tab follow, as a screen whose base adds its buttons before
    // the fields of the screen does.
    void placeLast(Control& control);
    // The elements of a control array, in index order.
    std::vector<Control*> array(const QString& name) const;
    std::vector<Control*> controls() const;
    // Sets the enabled state of each element of a button array from a mask such as "111111110011".
    void applyMask(const QString& arrayName, const QString& mask);
    QString mask(const QString& arrayName) const;

    // Focus, as the logic moves it: no rule runs.
    Control* focus() const { return m_focus; }
    void setFocus(Control& control);
    void setFocus(const QString& name, int index = -1);
    void clearFocus() { m_focus = nullptr; }

    // What the person does, through the widgets or the scenario runner. Each returns false when a rule
    // refused, the focus staying where it was.
    bool moveFocus(Control* target);
    bool leave(Control& control);
    bool focusNext();
    bool type(Control& control, const QString& text);
    bool paste(Control& control, const QString& text);
    bool pressKey(Control& control, Key key, QChar character = {});
    bool click(Control& control);
    bool choose(ComboBox& combo, const QStringList& values);
    bool changeTab(TabStrip& strip, int page);
    // The person makes a row of a list current and, when `tick` holds a value, ticks or clears it; the
    // list's click runs.
    bool selectRow(ListControl& list, int row, std::optional<bool> tick = std::nullopt) {
        if (!moveFocus(&list))
            return false;
        list.setCurrent(row);
        if (tick)
            list.setTicked(row, *tick);
        if (list.onClick)
            list.onClick();
        return true;
    }
    // The person sets the date of a date box, or clears it with a null date.
    bool setDate(DateBox& box, const QDate& date) {
        if (!moveFocus(&box))
            return false;
        box.setDate(date);
        return true;
    }

    // Values handed in by the opener and out to it.
    QVariantMap inputs;
    QVariantMap outputs;

Q_SIGNALS:
    void changed();
    void controlAdded(Control* control);
    // The clinic's colours changed: the screen is painted again in its family's colours.
    void repaint();

protected:
    // Delivers one key through the control's filter and rules.
    bool deliverKey(Control& control, int key);

private:
    Process& m_process;
    QString m_name;
    QString m_caption;
    std::vector<std::unique_ptr<Control>> m_controls;
    Control* m_focus = nullptr;
    int m_activations = 0;
    bool m_closed = false;
};

} // namespace vantrel
