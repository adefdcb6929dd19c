#include "core/Lookup.h"
#include "core/Process.h"
#include "core/Screen.h"
#include "prescription/Safety.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace vantrel {

// The safety of one brand, with its drugs one by one, or of one drug, to read.
class FrmBrandSafety : public Screen {
public:
    explicit FrmBrandSafety(Process& process) : Screen(process, u"FrmBrandSafety"_s) {
        colourFamily = u"Information"_s;
        m_panel = std::make_unique<SafetyPanel>(*this);
        auto& quit = add<Button>(u"CmdQuit"_s);
        quit.setCausesValidation(false);
        quit.onClick = [this] { close(); };
    }

    void load() override {
        const bool forDrug = inputs.value(u"ShowSafetyFor"_s).toBool();
        if (forDrug) {
            setCaption(u"Drug Safety Parameters"_s);
            control(u"CmdQuit"_s)->setCaption(u"&Quit from Drug Safety Parameters"_s);
            m_panel->showSingleDrug(inputs.value(u"SafeDrugCode"_s).toLongLong());
            m_panel->showDrugPanel(true);
            control(u"LblDrugTitle"_s)->setCaption(u" Drug Safety Parameters "_s);
            for (const QString& name : {u"LblBrand"_s, u"LblDrug"_s, u"CmdPrevDrug"_s, u"CmdNextDrug"_s})
                control(name)->setVisible(false);
        } else {
            setCaption(u"Brand Safety Parameters"_s);
            control(u"CmdQuit"_s)->setCaption(u"&Quit from Brand Safety Parameters"_s);
            const qint64 brand = inputs.value(u"SafeBrandCode"_s).toLongLong();
            m_panel->showBrand(brand, BrandName(db(), brand));
            m_panel->showDrugPanel(false);
        }
        setFocus(u"CmdQuit"_s);
    }

private:
    std::unique_ptr<SafetyPanel> m_panel;
};

VANTREL_SCREEN(FrmBrandSafety);

} // namespace vantrel
