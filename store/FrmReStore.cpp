#include "core/Process.h"
#include "core/Screen.h"
#include "core/Startup.h"

using namespace Qt::StringLiterals;

namespace vantrel {

// Restore from a backup. Until the backup screens are built, it tells the person where things stand and
// leaves the program, as cancelling a restore does when the database could not be opened.
class FrmReStore : public Screen {
public:
    explicit FrmReStore(Process& process) : Screen(process, u"FrmReStore"_s) {
        setCaption(u"Restore From Back-Up"_s);
        colourFamily = u"Database"_s;
        add<Label>(u"LblNotice"_s)
            .setText(u"Restoring a backup is not available in this version. Copy a backup of Vantrel.db into "
                     "the Data folder by hand, then start Vantrel again."_s);
        auto& cancel = add<Button>(u"Cmd_Undo"_s);
        cancel.setCaption(u"&Cancel"_s);
        cancel.onClick = [this] { Cancel(); };
    }

    bool queryClose() override {
        Cancel();
        return true;
    }

private:
    void Cancel() {
        if (state().RestoreOnly)
            ExitApplication(process());
        else
            close();
    }
};

VANTREL_SCREEN(FrmReStore);

} // namespace vantrel
