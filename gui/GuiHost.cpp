#include "gui/GuiHost.h"

#include "core/Process.h"
#include "core/Screen.h"
#include "gui/Binder.h"
#include "gui/MainWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QDesktopServices>
#include <QDialog>
#include <QDir>
#include <QEventLoop>
#include <QFileInfo>
#include <QLockFile>
#include <QScreen>
#include <QSoundEffect>
#include <QThread>
#include <QTimer>
#include <QUrl>
#include <QVBoxLayout>
#include <algorithm>

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

// The window of a modal screen. Its close box and Escape do not close it: a close request goes to the
// screen, which may refuse it; the screen's own closing ends the dialog.
class ScreenDialog : public QDialog {
public:
    using QDialog::QDialog;
    std::function<void()> onCloseRequest;

    void reject() override {
        if (onCloseRequest)
            onCloseRequest();
    }

protected:
    void closeEvent(QCloseEvent* event) override {
        event->ignore();
        reject();
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() != Qt::Key_Escape)
            QDialog::keyPressEvent(event);
    }
};

} // namespace

GuiHost::GuiHost(int runMode) : m_runMode(runMode) {}

GuiHost::~GuiHost() {
    for (const View& view : m_views) {
        if (view.binder)
            view.binder->detach();
        delete view.window;
    }
    delete m_main;
    if (m_hourglass)
        QApplication::restoreOverrideCursor();
}

bool GuiHost::mainWindowShown() const {
    return m_main && m_main->isVisible();
}

bool GuiHost::anotherInstanceRunning() {
    if (m_lock && m_lock->isLocked())
        return false;
    m_lock =
        std::make_unique<QLockFile>(QDir(QDir::tempPath()).filePath(u"vantrel-%1.lock"_s.arg(m_runMode)));
    // Held for the life of the process; only a crashed owner makes it stale, never its age.
    m_lock->setStaleLockTime(0);
    return !m_lock->tryLock(0);
}

QSize GuiHost::screenSize() {
    const QScreen* primary = QGuiApplication::primaryScreen();
    return primary ? primary->size() : QSize();
}

MainWindow& GuiHost::ensureMainWindow() {
    if (!m_main) {
        m_main = new MainWindow;
        m_main->setWindowTitle(m_title.isEmpty() ? u"Vantrel"_s : m_title);
        m_main->canClose = [this] {
            return m_mainScreen && m_mainScreen->process().requestClose(*m_mainScreen);
        };
    }
    return *m_main;
}

void GuiHost::show(Screen& screen) {
    if (screen.name().compare(u"MainForm"_s, Qt::CaseInsensitive) == 0) {
        m_mainScreen = &screen;
        ensureMainWindow().showMaximized();
        return;
    }
    Binder* binder = Binder::create(screen);
    QWidget* form = binder->form();
    View view{&screen, form, binder, false};
    if (form->property("frameless").toBool()) {
        form->setWindowFlags(Qt::SplashScreen | Qt::FramelessWindowHint);
        form->adjustSize();
        if (const QScreen* primary = QGuiApplication::primaryScreen())
            form->move(primary->geometry().center() - form->rect().center());
        form->show();
        form->raise();
    } else {
        ensureMainWindow().addScreen(form);
        view.embedded = true;
    }
    m_views.push_back(view);
    QTimer::singleShot(0, binder, [binder] { binder->applyFocus(); });
}

void GuiHost::runModal(Screen& screen) {
    Binder* binder = Binder::create(screen);
    QWidget* form = binder->form();
    QWidget* parent = QApplication::activeModalWidget();
    if (!parent && m_main && m_main->isVisible())
        parent = m_main;
    auto* dialog = new ScreenDialog(parent);
    auto* layout = new QVBoxLayout(dialog);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(form);
    if (form->minimumSize() == form->maximumSize())
        layout->setSizeConstraint(QLayout::SetFixedSize);
    // Over a maximised main window the dialog sits in the middle of the screen, wherever the window manager
    // has got to with the maximising.
    if (parent && parent->isMaximized()) {
        dialog->adjustSize();
        dialog->move(parent->screen()->availableGeometry().center() - dialog->rect().center());
    }
    const auto setTitle = [this, dialog, &screen] {
        if (!screen.caption().isEmpty())
            dialog->setWindowTitle(screen.caption());
        else
            dialog->setWindowTitle(m_title.isEmpty() ? u"Vantrel"_s : m_title);
    };
    setTitle();
    connect(&screen, &Screen::changed, dialog, setTitle);
    dialog->onCloseRequest = [&screen] {
        if (!screen.isClosed())
            screen.process().requestClose(screen);
    };
    m_views.push_back({&screen, dialog, binder, false});
    // Once the dialog shows, inside its own event loop, so that a screen that closes at once ends it.
    QTimer::singleShot(0, dialog, [&screen, binder] {
        screen.activated();
        binder->applyFocus();
    });
    const QPointer<QDialog> guard(dialog);
    ++m_modalDepth;
    dialog->exec();
    --m_modalDepth;
    if (guard)
        guard->deleteLater();
    schedulePurge(screen.process());
}

void GuiHost::remove(Screen& screen) {
    if (&screen == m_mainScreen) {
        m_mainScreen = nullptr;
        if (m_main) {
            m_main->canClose = nullptr;
            m_main->hide();
            m_main->deleteLater();
        }
    }
    const auto it = std::find_if(m_views.begin(), m_views.end(),
                                 [&screen](const View& view) { return view.screen == &screen; });
    if (it != m_views.end()) {
        const View view = *it;
        m_views.erase(it);
        if (view.binder)
            view.binder->detach();
        if (auto* dialog = qobject_cast<QDialog*>(view.window)) {
            dialog->done(QDialog::Accepted);
        } else if (view.window) {
            if (view.embedded && m_main)
                m_main->removeScreen(view.window);
            view.window->hide();
            view.window->deleteLater();
            focusFrontScreen();
        }
    }
    schedulePurge(screen.process());
}

void GuiHost::focusFrontScreen() {
    QWidget* front = m_main ? m_main->frontScreen() : nullptr;
    for (const View& view : m_views) {
        if (front && view.window == front && view.binder)
            view.binder->applyFocus();
    }
}

void GuiHost::schedulePurge(Process& process) {
    if (m_purgeQueued)
        return;
    m_purgeQueued = true;
    // Closed screens are destroyed from the main event loop only, when no screen's code can be running.
    QTimer::singleShot(m_modalDepth == 0 ? 0 : 250, this, [this, &process] {
        m_purgeQueued = false;
        if (m_modalDepth == 0 && QThread::currentThread()->loopLevel() <= 1)
            process.purge();
        else
            schedulePurge(process);
    });
}

void GuiHost::setMainTitle(const QString& title) {
    m_title = title;
    if (m_main)
        m_main->setWindowTitle(title);
}

void GuiHost::resetLauncher() {
    if (!m_main)
        return;
    // The launcher is the first screen of the window; a screen still open over it stays in front.
    const auto embedded =
        std::count_if(m_views.begin(), m_views.end(), [](const View& v) { return v.embedded; });
    if (embedded <= 1)
        m_main->showFirstScreen();
    focusFrontScreen();
}

void GuiHost::hourglass(bool on) {
    if (on == m_hourglass)
        return;
    m_hourglass = on;
    if (on)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
}

void GuiHost::processEvents() {
    QCoreApplication::processEvents();
}

void GuiHost::waitUntil(const QDateTime& since, int seconds) {
    QDateTime start = since;
    start.setTime(QTime(since.time().hour(), since.time().minute(), since.time().second()));
    const QDateTime until = start.addSecs(seconds);
    if (QDateTime::currentDateTime() >= until)
        return;
    QEventLoop loop;
    QTimer poll;
    connect(&poll, &QTimer::timeout, &loop, [&loop, until] {
        if (QDateTime::currentDateTime() >= until)
            loop.quit();
    });
    poll.start(50);
    loop.exec();
}

void GuiHost::playSound(const QString&, const QString& file) {
    QSoundEffect*& effect = m_sounds[file];
    if (!effect) {
        effect = new QSoundEffect(this);
        effect->setSource(QUrl::fromLocalFile(file));
    }
    effect->play();
}

void GuiHost::showHelp(const QString& file, int) {
    if (QFileInfo::exists(file))
        QDesktopServices::openUrl(QUrl::fromLocalFile(file));
}

void GuiHost::quit() {
    m_quit = true;
    QCoreApplication::quit();
}

} // namespace vantrel
