#include "core/Host.h"
#include "core/Process.h"
#include "core/Screen.h"
#include "core/Startup.h"

using namespace Qt::StringLiterals;

namespace vantrel {

// The main window: a container for the launcher and every screen opened from it.
class MainForm : public Screen {
public:
    explicit MainForm(Process& process) : Screen(process, u"MainForm"_s) {}

    void load() override {
        ProcessState& s = state();
        s.AppTitle =
            QString::fromUtf16(kDesignTitle) + u" - "_s + ProperCase(s.Params.text(u"Clinic_User"_s));
        host().setMainTitle(s.AppTitle);
        if (!s.RestoreOnly)
            process().open(s.RunMode == 2 ? u"OPDSlide"_s : u"Slide"_s);
        if (!s.RestoreOnly && s.Params.flag(u"Scheduler"_s))
            ShowReminderDue();
        if (!s.RestoreOnly && s.RunMode == 1 && !s.Params.flag(u"UserProfileUpdated"_s)) {
            host().resetLauncher();
            process().open(u"ControlForm"_s);
        }
    }

    // Only the program's own exit routine closes the main window.
    bool queryClose() override { return state().Exiting; }

private:
    void ShowReminderDue() {
        ProcessState& s = state();
        const QDate today = s.clock.today();
        QString sql = u"SELECT * FROM Scheduler WHERE ROff = 0 AND (Rem_Date = ?"_s;
        QVariantList params{sqlDate(today)};
        if (s.Params.flag(u"Show_Imp"_s)) {
            sql += u" OR (Rem_Date BETWEEN ? AND ? AND Impt <> 0)"_s;
            params << sqlDate(today) << sqlDate(today.addDays(s.Params.integer(u"ImpMessageDays"_s)));
        }
        sql += u") ORDER BY Rem_Date"_s;
        if (!s.OpenDb.exists(sql, params))
            return;
        host().resetLauncher();
        process().open(u"FrmReminder"_s);
    }
};

VANTREL_SCREEN(MainForm);

} // namespace vantrel
