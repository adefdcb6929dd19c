#include "core/Process.h"
#include "core/Screen.h"

using namespace Qt::StringLiterals;

namespace vantrel {

// The picture shown while the program starts.
class Splash : public Screen {
public:
    explicit Splash(Process& process) : Screen(process, u"Splash"_s) {
        add<ImageBox>(u"ImgSplash"_s).setResource(u":/images/splash.png"_s);
    }
};

VANTREL_SCREEN(Splash);

} // namespace vantrel
