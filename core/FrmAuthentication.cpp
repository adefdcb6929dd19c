#include "core/KeyFilters.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "core/Screen.h"
#include "core/Startup.h"

using namespace Qt::StringLiterals;

namespace vantrel {

// The login: the clinic user's password, or the administrative one.
class FrmAuthentication : public Screen {
public:
    explicit FrmAuthentication(Process& process) : Screen(process, u"FrmAuthentication"_s) {
        setCaption(u"Vantrel Login"_s);
        add<Label>(u"LblUser"_s).setText(ProperCase(state().Params.text(u"Clinic_User"_s)));
        auto& password = add<TextBox>(u"TxtPassword"_s);
        password.keyFilter = [](int key, const QString&, int) { return KeyAlphanumeric(key); };
        password.onKeyPress = [this](int key) -> KeyResult {
            if (key == 13) {
                Continue();
                return {0, false};
            }
            return {key, false};
        };
        addImageButton(u"ImgContinue"_s, u"Continue..."_s, [this] { Continue(); });
        addImageButton(u"ImgQuit"_s, u"Quit From Vantrel."_s, [this] { Quit(); });
    }

    void load() override { setFocus(u"TxtPassword"_s); }

    bool queryClose() override {
        Quit();
        return true;
    }

private:
    void addImageButton(const QString& name, const QString& caption, std::function<void()> action) {
        auto& image = add<ImageBox>(name);
        image.setCaption(caption);
        image.setResource(u":/images/%1.png"_s.arg(name));
        image.onClick = std::move(action);
        image.onHover = [this, &image, name](bool over) {
            if (over)
                process().playSound(u"MOVE"_s);
            image.setResource(over ? u":/images/%1Over.png"_s.arg(name) : u":/images/%1.png"_s.arg(name));
        };
    }

    void Continue() {
        auto& box = static_cast<TextBox&>(*control(u"TxtPassword"_s));
        const QString typed = box.text().trimmed();
        const ClinicParameters& p = state().Params;
        if (typed != p.text(u"Password"_s) && typed != p.text(u"HOpt"_s)) {
            process().playSound(u"CLICK"_s);
            prompter().stop(u"Not a Valid Password"_s);
            setFocus(box);
            return;
        }
        if (typed == p.text(u"HOpt"_s))
            state().AdminLogin = true;
        close();
    }

    void Quit() {
        process().playSound(u"STOP"_s);
        ExitApplication(process());
        state().LoginCancelled = true;
    }
};

VANTREL_SCREEN(FrmAuthentication);

} // namespace vantrel
