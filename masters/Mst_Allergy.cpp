#include "core/Process.h"
#include "core/Prompter.h"
#include "masters/MasterScreen.h"

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

// The six tables kept by the one screen, by the letter the launcher hands it.
struct Kept {
    QString letter;
    QString table;
    QString key;
    QString label;
    QString plural;
    QString nameColumn;
};

const std::vector<Kept>& KeptTables() {
    static const std::vector<Kept> tables = {
        {u"O"_s, u"Occupation"_s, u"OCCUPATION"_s, u"Occupation"_s, u"Occupations"_s, u"Name"_s},
        {u"R"_s, u"Relation"_s, u"RELATION"_s, u"Relationship"_s, u"Relationships"_s, u"Relation"_s},
        {u"P"_s, u"Personal"_s, u"PERSONAL"_s, u"Personal Detail"_s, u"Personal Details"_s, u"Name"_s},
        {u"T"_s, u"AllergyTypes"_s, u"ALLERGYTYPE"_s, u"Allergy Type"_s, u"Allergy Types"_s, u"Name"_s},
        {u"A"_s, u"Allergies"_s, u"ALLERGY"_s, u"Allergy"_s, u"Allergies"_s, u"Name"_s},
        {u"S"_s, u"AllergySub"_s, u"SUBALLERGY"_s, u"Sub-Allergy"_s, u"Sub-Allergies"_s, u"Name"_s},
    };
    return tables;
}

MasterDefinition Definition(const Kept& k) {
    MasterDefinition d =
        StandardMaster(u"Mst_Allergy"_s, k.table, k.key, k.label,
                       u"SELECT * FROM %1 ORDER BY %2, Code"_s.arg(k.table, k.nameColumn),
                       u"List of All Avaliable "_s + k.plural, u"Locate A Specified "_s + k.label,
                       u"   ["_s + k.plural + u" Master]"_s);
    d.nameColumn = k.nameColumn;
    d.locator = u"SELECT Code, %2 AS Name FROM %1 ORDER BY %2, Code"_s.arg(k.table, k.nameColumn);
    d.inUse = u"Can Not Delete the "_s + k.label + u" in Use."_s;
    d.buttonArray = u"Cmd"_s;
    return d;
}

} // namespace

// Occupations, relationships, personal details, allergy types, allergies and sub-allergies: one screen,
// told by the launcher's letter which table it keeps.
class Mst_Allergy : public MasterScreen {
public:
    explicit Mst_Allergy(Process& owner) : MasterScreen(owner, Definition(KeptTables().front())) {
        form = u"Mst_Allergy"_s;
        m_typeCaption = &add<Label>(u"LblCmbType"_s);
        m_typeCaption->setCaption(u"Allergy Type"_s);
        m_type = &add<ComboBox>(u"CmbType"_s);
        m_type->setCaption(u"Allergy Type"_s);
        m_type->onValidate = [this] { return EditMode() == 0 || TypeKnown(); };
        m_quantity = &add<CheckBox>(u"Chk_Qty"_s);
        m_quantity->setCaption(u"Quantitative Personal Detail"_s);
        m_unitCaption = &add<Label>(u"LblTxtUnit"_s);
        m_unitCaption->setCaption(u"Unit of Measurement"_s);
        m_unit = &add<TextBox>(u"TxtUnit"_s);
        m_unit->setCaption(u"Unit of Measurement"_s);
    }

    void load() override {
        const QString letter = inputs.value(u"Mode"_s).toString().trimmed().toUpper();
        const auto& tables = KeptTables();
        const auto it = std::find_if(tables.begin(), tables.end(),
                                     [&letter](const Kept& k) { return k.letter == letter; });
        if (it == tables.end()) {
            prompter().info(u"Option Not Available."_s);
            close();
            return;
        }
        m_letter = letter;
        setDefinition(Definition(*it));
        // Only the fields of the kept table show, with their captions.
        const bool allergy = m_letter == u"A"_s;
        const bool personal = m_letter == u"P"_s;
        m_typeCaption->setVisible(allergy);
        m_type->setVisible(allergy);
        m_quantity->setVisible(personal);
        m_unitCaption->setVisible(personal);
        m_unit->setVisible(personal);
        if (m_letter == u"A"_s)
            FillCombo(db(), *m_type, u"SELECT Code, Name FROM AllergyTypes ORDER BY Name, Code"_s);
        MasterScreen::load();
    }

protected:
    void lockFields(bool editing) override {
        m_type->setEnabled(editing);
        m_quantity->setEnabled(editing);
        m_unit->setLocked(!editing);
    }

    void clearFields() override {
        ShowComboCode(*m_type, 0);
        m_quantity->setValue(false);
        m_unit->setText(QString());
    }

    void showFields(const Row* row) override {
        if (m_letter == u"A"_s)
            ShowComboCode(*m_type, row ? row->integer(u"AllergyType"_s) : 0);
        if (m_letter == u"P"_s) {
            m_quantity->setValue(row && row->flag(u"Quantative"_s));
            m_unit->setText(row ? row->text(u"PUnit"_s) : QString());
        }
    }

    bool validateFields() override {
        if (m_letter != u"A"_s)
            return true;
        if (m_type->text().trimmed().isEmpty()) {
            prompter().stop(u"Allergy Type Cannot be Left Blank."_s);
            setFocus(*m_type);
            return false;
        }
        if (!TypeKnown()) {
            setFocus(*m_type);
            return false;
        }
        return true;
    }

    void writeFields(std::vector<std::pair<QString, QVariant>>& columns) override {
        if (m_letter == u"A"_s)
            columns.emplace_back(u"AllergyType"_s, ComboCode(*m_type));
        if (m_letter == u"P"_s) {
            columns.emplace_back(u"Quantative"_s, m_quantity->value() ? 1 : 0);
            columns.emplace_back(u"PUnit"_s, m_unit->text().trimmed());
        }
    }

    // The sub-allergies of an allergy go with it.
    bool deleteLinks(qint64 code) override {
        return m_letter != u"A"_s ||
               db().execute(u"DELETE FROM AllergyDet WHERE AllergyCode = ?"_s, {code}) >= 0;
    }

private:
    bool TypeKnown() {
        if (ComboCode(*m_type) >= 0)
            return true;
        prompter().stop(u"Invalid Allergy Type."_s);
        return false;
    }

    QString m_letter;
    Label* m_typeCaption = nullptr;
    ComboBox* m_type = nullptr;
    CheckBox* m_quantity = nullptr;
    Label* m_unitCaption = nullptr;
    TextBox* m_unit = nullptr;
};

VANTREL_SCREEN(Mst_Allergy);

} // namespace vantrel
