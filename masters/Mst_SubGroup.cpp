#include "core/Process.h"
#include "core/Prompter.h"
#include "masters/MasterScreen.h"

using namespace Qt::StringLiterals;

namespace vantrel {

// Sub-groups of the brands' therapeutic groups: a name under a main group. The same name may stand under
// two groups.
class Mst_SubGroup : public MasterScreen {
public:
    explicit Mst_SubGroup(Process& process)
        : MasterScreen(process,
                       StandardMaster(u"Mst_SubGroup"_s, u"SubGroup"_s, u"SUBGROUP"_s, u"SubGroup"_s,
                                      u"SELECT * FROM SubGroup ORDER BY Name, Code"_s,
                                      u"List of All Avaliable Sub Groups"_s,
                                      u"Locate a Specified Sub Group"_s, u"   [Sub Group Master]"_s)) {
        form = u"Mst_SubGroup"_s;
        m_group = &add<ComboBox>(u"DBC_Group"_s);
        m_group->editable = false;
    }

    void load() override {
        FillCombo(db(), *m_group, u"SELECT * FROM GroupName ORDER BY Name, Code"_s);
        MasterScreen::load();
    }

protected:
    bool openingChecks() override {
        if (m_group->count() > 0)
            return true;
        prompter().stop(u"No Main Group Define."_s);
        return false;
    }

    void lockFields(bool editing) override { m_group->setEnabled(editing); }
    void clearFields() override { ShowComboCode(*m_group, 0); }
    void showFields(const Row* row) override {
        ShowComboCode(*m_group, row ? row->integer(u"GroupCode"_s) : 0);
    }

    bool validateFields() override {
        if (ComboCode(*m_group) > 0)
            return true;
        prompter().stop(u"Group Description Should Not be Empty."_s);
        setFocus(*m_group);
        return false;
    }

    void writeFields(std::vector<std::pair<QString, QVariant>>& columns) override {
        columns.emplace_back(u"GroupCode"_s, std::max<qint64>(ComboCode(*m_group), 0));
    }

    qint64 parentCode() const override { return std::max<qint64>(ComboCode(*m_group), 0); }

private:
    ComboBox* m_group = nullptr;
};

VANTREL_SCREEN(Mst_SubGroup);

} // namespace vantrel
