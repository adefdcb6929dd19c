#include "core/Process.h"
#include "core/Startup.h"
#include "gui/GuiHost.h"
#include "gui/GuiPrompter.h"
#include "gui/Look.h"

#include <QApplication>

using namespace Qt::StringLiterals;

int main(int argc, char* argv[]) {
    QApplication app(argc, argv);
    QApplication::setApplicationName(VANTREL_RUN_MODE == 2 ? u"Vantrel OPD"_s : u"Vantrel"_s);
    // Only the program's exit routine ends it, never the closing of a window.
    QApplication::setQuitOnLastWindowClosed(false);
    vantrel::ApplyLook(app);

    vantrel::GuiHost host(VANTREL_RUN_MODE);
    vantrel::GuiPrompter prompter(host);
    vantrel::Process process(host, prompter);
    vantrel::Main(process, VANTREL_RUN_MODE, QCoreApplication::applicationDirPath());
    if (process.state.Exiting || host.quitCalled() || !host.mainWindowShown())
        return 0;
    return QApplication::exec();
}
