#include "core/Lookup.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "core/Screen.h"
#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

// Columns of the grid: the brand and drug of each side of a pair, and the kind of interaction.
enum Column { BrandCode = 0, Trades, DrugCode, Drugs, Trades1, BrandCode1, DrugCode1, Drugs1, Details };

} // namespace

// The interacting pairs among the brands of a prescription or a ready-made prescription: for one brand
// about to be written, which the doctor accepts or refuses, or for all lines, to read.
class FrmIntDetails : public Screen {
public:
    explicit FrmIntDetails(Process& process) : Screen(process, u"FrmIntDetails"_s) {
        colourFamily = u"Information"_s;
        m_frame = &add<Label>(u"FraInteraction"_s, -1, ControlKind::Frame);
        m_grid = &add<Grid>(u"GrdInteraction"_s);
        m_grid->addColumn(CodeColumn(BrandCode, u"BrandCode"_s));
        m_grid->addColumn(ShownColumn(Trades, u"Trades"_s, u"Brand"_s, 24));
        m_grid->addColumn(CodeColumn(DrugCode, u"DrugCode"_s));
        m_grid->addColumn(ShownColumn(Drugs, u"Drugs"_s, u"Drug"_s, 24));
        m_grid->addColumn(ShownColumn(Trades1, u"Trades1"_s, u"Interacts With Brand"_s, 24));
        m_grid->addColumn(CodeColumn(BrandCode1, u"BrandCode1"_s));
        m_grid->addColumn(CodeColumn(DrugCode1, u"DrugCode1"_s));
        m_grid->addColumn(ShownColumn(Drugs1, u"Drugs1"_s, u"Drug"_s, 24));
        m_grid->addColumn(ShownColumn(Details, u"Details"_s, u"Interaction"_s, 30));
        m_grid->locked = true;
        m_grid->allowAdd = false;
        m_grid->allowDelete = false;
        m_grid->onCellClick = [this](int column) { cellClicked(column); };
        m_brandInfo = &add<Button>(u"Cmd_BrandInfo"_s);
        m_brandInfo->setCaption(u"&Brand Info"_s);
        m_brandInfo->onClick = [this] { information(u"FrmGenericInfo"_s); };
        m_drugInfo = &add<Button>(u"Cmd_DrugInfo"_s);
        m_drugInfo->setCaption(u"&Drug Info"_s);
        m_drugInfo->onClick = [this] { information(u"FrmPharmaInfo"_s); };
        m_accept = &add<Button>(u"Cmd_Ok"_s);
        m_accept->setCaption(u"&Accept"_s);
        m_accept->onClick = [this] {
            outputs.insert(u"ChkInteraction"_s, false);
            close();
        };
        auto& cancel = add<Button>(u"Cmd_Cancel"_s);
        cancel.setCaption(u"&Cancel"_s);
        cancel.onClick = [this] { close(); };
        add<Label>(u"LblNote"_s)
            .setCaption(u"To Disable this Interaction Check,  Use  Package Control Parameters [ Alerts ] of "
                        "Control Parameters"_s);
    }

    void load() override {
        setCaption(u"Drug Interaction Information"_s);
        m_entryBrand = state().CurrentBrandCode;
        m_entryDrug = state().CurrentPharmaCode;
        // Refused unless the doctor accepts.
        outputs.insert(u"ChkInteraction"_s, true);
        m_showAll = inputs.value(u"ShowAll"_s).toBool();
        const QString lines = inputs.value(u"Source"_s).toInt() == 1 ? u"TmpReadyDet"_s : u"TmpDet"_s;
        const qint64 brand = inputs.value(u"GetBrandCode"_s).toLongLong();
        db().execute(u"DELETE FROM TmpIntDetails"_s);
        if (m_showAll) {
            // Both directions are stored, so each pair shows twice, once from each side.
            db().execute(
                u"INSERT INTO TmpIntDetails (Trades, BrandCode, Drugs, DrugCode, Trades1, BrandCode1, "
                "Drugs1, DrugCode1, Details) SELECT G.Name, G.Code, F.Name, F.Code, C.Name, C.Code, D.Name, "
                "D.Code, E.Name FROM GenericPharma A, Interaction B, GenericName C, PharmaName D, "
                "InteractionType E, PharmaName F, %1 G WHERE A.GenericCode IN (SELECT Code FROM %1) "
                "AND A.PharmaCode = B.PharmaCode AND A.GenericCode = C.Code AND B.IntTypeCode = E.Code "
                "AND D.Code = B.PharmaCode AND B.PharmaCodeInt = F.Code "
                "AND B.PharmaCodeInt IN (SELECT PharmaCode FROM GenericPharma WHERE GenericCode = G.Code) "
                "ORDER BY G.Name"_s.arg(lines));
            m_grid->setCaption(u"Interaction Details of All Prescribed Brands"_s);
        } else {
            const QString name = BrandName(db(), brand);
            db().execute(
                u"INSERT INTO TmpIntDetails (Trades, BrandCode, Trades1, BrandCode1, Drugs1, DrugCode1, "
                "Details, Drugs, DrugCode) SELECT ?, ?, C.Name, C.Code, D.Name, D.Code, E.Name, F.Name, "
                "F.Code FROM GenericPharma A, Interaction B, GenericName C, PharmaName D, "
                "InteractionType E, PharmaName F "
                "WHERE A.GenericCode IN (SELECT Code FROM %1 WHERE Code <> ? AND Code <> ?) "
                "AND A.PharmaCode = B.PharmaCode AND A.GenericCode = C.Code AND B.IntTypeCode = E.Code "
                "AND D.Code = B.PharmaCode AND B.PharmaCodeInt = F.Code "
                "AND B.PharmaCodeInt IN (SELECT PharmaCode FROM GenericPharma WHERE GenericCode = ?) "
                "ORDER BY F.Name"_s.arg(lines),
                {name, brand, brand, brand, brand});
            m_grid->setCaption(u"Interaction Details of "_s + name);
        }
        m_grid->bind(db(), u"TmpIntDetails"_s);
        m_frame->setCaption(m_grid->caption());
        m_accept->setVisible(!m_showAll);
        m_brandInfo->setEnabled(false);
        m_drugInfo->setEnabled(false);
    }

    void activate() override {
        if (!firstActivation() || m_grid->rowCount() > 0)
            return;
        // Nothing interacts: the list of all lines says so, the check of one brand accepts in silence.
        if (m_showAll)
            prompter().info(u"No Interaction Found."_s);
        else
            outputs.insert(u"ChkInteraction"_s, false);
        close();
    }

    void unload() override {
        state().CurrentBrandCode = m_entryBrand;
        state().CurrentPharmaCode = m_entryDrug;
    }

private:
    void cellClicked(int column) {
        const bool brand = column == Trades || column == Trades1;
        const bool drug = column == Drugs || column == Drugs1;
        if (brand)
            state().CurrentBrandCode =
                m_grid->value(column == Trades ? u"BrandCode"_s : u"BrandCode1"_s).toLongLong();
        if (drug)
            state().CurrentPharmaCode =
                m_grid->value(column == Drugs ? u"DrugCode"_s : u"DrugCode1"_s).toLongLong();
        m_brandInfo->setEnabled(brand);
        m_drugInfo->setEnabled(drug);
    }

    void information(const QString& screenName) {
        if (!ScreenRegistry::instance().has(screenName)) {
            prompter().info(u"Option Not Available."_s);
            return;
        }
        process().openModal(screenName);
    }

    Label* m_frame = nullptr;
    Grid* m_grid = nullptr;
    Button* m_brandInfo = nullptr;
    Button* m_drugInfo = nullptr;
    Button* m_accept = nullptr;
    bool m_showAll = false;
    qint64 m_entryBrand = 0;
    qint64 m_entryDrug = 0;
};

VANTREL_SCREEN(FrmIntDetails);

} // namespace vantrel
