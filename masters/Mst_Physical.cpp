#include "core/Process.h"
#include "core/Prompter.h"
#include "masters/MasterScreen.h"

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

MasterDefinition PhysicalDefinition() {
    MasterDefinition d = StandardMaster(
        u"Mst_Physical"_s, u"Physical"_s, u"PHYSICAL"_s, u"Examination"_s,
        u"SELECT * FROM Physical ORDER BY Name, Code"_s, u"List of All Avaliable Physical Examinations"_s,
        u"Locate a Specified Examination"_s, u"   [Physical Examination Master]"_s);
    d.locator = u"SELECT Code, Name FROM Physical ORDER BY Name, Code"_s;
    NameMessages(d, u"Physical Examination Name"_s, u"Duplicate Examination."_s);
    return d;
}

} // namespace

// The physical examinations recorded for patients; at least one of them stays visible in the list.
class Mst_Physical : public MasterScreen {
public:
    explicit Mst_Physical(Process& owner) : MasterScreen(owner, PhysicalDefinition()) {
        form = u"Mst_Physical"_s;
        m_visible = &add<CheckBox>(u"Chk_Visible"_s);
        m_visible->setCaption(u"Visible in Physical Examination List"_s);
        m_visible->onClick = [this] {
            if (!m_visible->value() && !OtherVisible()) {
                prompter().stop(u"At Least One Physical Examination Should be Visible."_s);
                m_visible->setValue(true);
            }
        };
        add<Label>(u"LblNote"_s)
            .setCaption(
                u"List of Physical Examination will be updated After  Starting  the  New  Vantrel  Session."_s);
    }

protected:
    void lockFields(bool editing) override { m_visible->setEnabled(editing); }
    void clearFields() override { m_visible->setValue(true); }
    void showFields(const Row* row) override { m_visible->setValue(row && row->flag(u"EVisible"_s)); }
    void writeFields(std::vector<std::pair<QString, QVariant>>& columns) override {
        columns.emplace_back(u"EVisible"_s, m_visible->value() ? 1 : 0);
    }

    bool mayDelete() override {
        if (!m_visible->value() || OtherVisible())
            return true;
        prompter().stop(u"At Least One Physical Examination Should Exist / Visible in Examination Master."_s);
        return false;
    }

private:
    // Another examination than the one on the screen is visible.
    bool OtherVisible() {
        const qint64 code = EditMode() == 1 ? 0 : currentCode();
        return db().exists(u"SELECT Code FROM Physical WHERE EVisible <> 0 AND Code <> ?"_s, {code});
    }

    CheckBox* m_visible = nullptr;
};

VANTREL_SCREEN(Mst_Physical);

} // namespace vantrel
