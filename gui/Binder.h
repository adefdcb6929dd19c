#pragma once

#include <functional>

#include "core/Screen.h"
#include "gui/GridModel.h"

#include <QHash>
#include <QLabel>
#include <QObject>
#include <QPointer>
#include <QStringList>
#include <memory>
#include <optional>
#include <vector>

class QKeyEvent;
class QLabel;
class QWidget;

namespace vantrel {

// Shows a screen in widgets and keeps both in step. The form is `:/forms/<screen name>.ui` (its root a plain
// QWidget named after the screen), or, for a screen without one, a plain form listing every control in
// order. Each control shows in the widget named after it (`Name(3)` in `Name_3`); an image's caption shows
// in a label named `<widget name>_Caption` when the form has one.
//
// The logic's changes go to the widgets as they happen. What the person does goes to the screen's own
// actions only: keys through the screen's key handling, clicks, picks, focus moves; when a rule refuses,
// the widgets show the logic's state again and the focus goes back where the screen keeps it.
class Binder : public QObject {
    Q_OBJECT
public:
    // Builds the form and binds it. The form has no parent; the binder lives as its child.
    static Binder* create(Screen& screen);
    ~Binder() override;

    QWidget* form() const { return m_form; }
    Screen* screen() const { return m_screen; }
    QWidget* widgetFor(const Control* control) const;
    // Gives the keyboard focus to the widget of the control the screen holds the focus on.
    void applyFocus();
    // Ends all traffic between the screen and the widgets: called before the screen goes away.
    void detach();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Binding {
        QPointer<Control> control;
        QWidget* widget = nullptr;
        QLabel* caption = nullptr;
        QPointer<GridModel> model;
        QStringList rowsShown;
    };

    Binder(Screen& screen, QWidget* form, bool designed);
    void bind(Control& control);
    void wire(Binding& b);
    void wireText(Binding& b);
    void wireGrid(Binding& b);
    void refresh(Binding& b);
    void refreshText(Binding& b);
    static void paintTone(QLabel& label, Tone tone);
    void refreshList(Binding& b);
    void refreshGrid(Binding& b);
    bool ruled(const std::function<bool()>& step);
    bool optionKey(Binding& b, QKeyEvent* event);
    bool keyPress(Binding& b, QKeyEvent* event);
    bool textKey(Binding& b, QKeyEvent* event, std::optional<Key> key);
    void removeSelection(Binding& b);
    void textEdited(Binding& b, const QString& text, int cursor);
    void focusIn(Binding& b);
    void personFocus(const QPointer<Control>& target);
    void gridRowChosen(Binding& b, int row);
    bool live(const Binding& b) const { return !m_detached && b.control; }

    QPointer<Screen> m_screen;
    QWidget* m_form;
    bool m_designed;
    bool m_detached = false;
    int m_updating = 0;
    int m_settingFocus = 0;
    int m_ruling = 0;
    Control* m_lastFocus = nullptr;
    std::vector<std::unique_ptr<Binding>> m_bindings;
    QHash<const QObject*, Binding*> m_byObject;
};

} // namespace vantrel
