#include "core/Process.h"
#include "core/Screen.h"
#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace vantrel {

// The general physical examination: one line for each examination the clinic shows, its observation typed
// beside it. Nothing reaches the database here: the observations go back to the list the prescription
// saves with itself.
class FrmPhysical : public Screen {
public:
    explicit FrmPhysical(Process& process) : Screen(process, u"FrmPhysical"_s) {
        colourFamily = u"Prescription"_s;
        m_grid = &add<Grid>(u"SsGrd"_s);
        m_grid->setCaption(u"General Physical Examination / Obervations"_s);
        m_grid->addColumn(CodeColumn(0, u"PhysicalCode"_s));
        GridColumn name = ShownColumn(1, u"Examinations"_s, u"Examinations"_s, 28);
        name.locked = true;
        m_grid->addColumn(name);
        m_grid->addColumn(ShownColumn(2, u"Observation"_s, u"Observation"_s, 40));
        m_grid->allowAdd = false;
        m_grid->allowDelete = false;
        m_grid->onKeyDown = [this](Key key) {
            if (key != Key::Enter)
                return false;
            m_grid->goToRow(m_grid->currentRow() + 1);
            return true;
        };
        auto& clear = add<Button>(u"Cmd_Clear"_s);
        clear.setCaption(u"C&lear"_s);
        clear.onClick = [this] { Clear(); };
        auto& back = add<Button>(u"Cmd_Back"_s);
        back.setCaption(u"&Back"_s);
        back.onClick = [this] { Back(); };
    }

    void load() override {
        static const std::pair<const char16_t*, const char16_t*> captions[] = {
            {u"P", u"Physical Examinations  [ Source - Patient Master ]"},
            {u"D", u"Physical Examinations  [ Source - Vantrel ]"},
            {u"HD", u"Physical Examinations  [ Source - Patient History - Prescription Details ]"},
            {u"HP", u"Physical Examinations  [ Source - Patient History - Patient Master ]"},
            {u"I", u"Physical Examinations  [ Source - Immunization - Patient Master ]"},
            {u"QP", u"Physical Examinations  [ Source - Query - Patient Master ]"},
            {u"QB", u"Physical Examinations  [ Source - Query - Prescription Details ]"},
            {u"V", u"Physical Examinations  [ Source - Patients Visit(s) ]"},
        };
        const QString source = inputs.value(u"ExaminationSource"_s).toString();
        for (const auto& [code, caption] : captions) {
            if (source == QString::fromUtf16(code))
                setCaption(QString::fromUtf16(caption));
        }
        db().execute(u"DELETE FROM TmpPhysical"_s);
        for (const PhysicalEntry& entry : state().PhysicalList)
            db().execute(
                u"INSERT INTO TmpPhysical (PhysicalCode, Examinations, Observation) VALUES (?, ?, ?)"_s,
                {entry.Code, entry.Name, entry.Observation});
        m_grid->bind(db(), u"TmpPhysical"_s);
        m_grid->locked = inputs.value(u"ReadOnly"_s).toBool();
        control(u"Cmd_Clear"_s)->setEnabled(!m_grid->locked);
    }

private:
    void Clear() {
        m_grid->discard();
        db().execute(u"UPDATE TmpPhysical SET Observation = ''"_s);
        m_grid->reload();
    }

    // The observations, trimmed, go back to the list in memory.
    void Back() {
        if (!m_grid->commit())
            return;
        if (!m_grid->locked) {
            for (const Row& row : db().select(u"SELECT PhysicalCode, Observation FROM TmpPhysical"_s)) {
                for (PhysicalEntry& entry : state().PhysicalList) {
                    if (entry.Code == row.integer(u"PhysicalCode"_s))
                        entry.Observation = row.text(u"Observation"_s).trimmed();
                }
            }
        }
        close();
    }

    Grid* m_grid = nullptr;
};

VANTREL_SCREEN(FrmPhysical);

} // namespace vantrel
