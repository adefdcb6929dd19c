#pragma once

#include <QMainWindow>
#include <functional>

class QStackedWidget;

namespace vantrel {

// The program's main window: a container whose central area stacks the screens that stay open, the launcher
// underneath and each screen opened from it on top, full size.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(QWidget* parent = nullptr);

    // Asked when the window's close box or the system wants the window closed; false keeps it open.
    std::function<bool()> canClose;

    void addScreen(QWidget* form);
    void removeScreen(QWidget* form);
    // Brings the first screen of the stack, the launcher, to the front.
    void showFirstScreen();
    // The screen in front, or nullptr when none is open.
    QWidget* frontScreen() const;

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QStackedWidget* m_stack;
    QWidget* m_backdrop;
};

} // namespace vantrel
