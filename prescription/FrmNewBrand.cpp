#include "core/Lookup.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "core/Screen.h"
#include "prescription/NewBrand.h"
#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace vantrel {

// A brand the doctor prescribes before the database knows it: its name, forms, composition, dosage and
// manufacturer now, its drugs and groups later in the brand master. It is made of the drug NONE, so the
// checks find it safe rather than unknown.
class FrmNewBrand : public Screen {
public:
    explicit FrmNewBrand(Process& process) : Screen(process, u"FrmNewBrand"_s) {
        colourFamily = u"Master"_s;
        for (const QString& name : {u"TxtName"_s, u"TxtGroup"_s, u"TxtDrug"_s}) {
            auto& box = add<TextBox>(name);
            box.setLocked(true);
            box.setTabStop(false);
        }
        add<Label>(u"LblNote"_s)
            .setCaption(
                u"A new brand has no safety parameters of its own yet: it is made of the drug NONE and "
                "reads as safe until its drugs are entered in the brand master."_s);
        m_forms = &add<ListBox>(u"LstDsg"_s);
        m_forms->checkBoxes = true;
        m_forms->onClick = [this] { offerTickedForms(); };
        m_form = &add<ComboBox>(u"CmbDsg"_s);
        m_form->onValidate = [this] {
            return inList(*m_form, u"Please Select the Prescribed Dosage Form Or Invalid Dosage Form."_s);
        };
        m_company = &add<ComboBox>(u"CmbCompany"_s);
        m_company->onValidate = [this] {
            return inList(*m_company,
                          u"Brand Manufacturer Name should not be Empty Or Invalid Manufacturer."_s);
        };
        m_composition = &add<TextBox>(u"TxtCompo"_s);
        m_composition->setMultiLine(true);
        m_dosage = &add<TextBox>(u"TxtDosage"_s);
        m_dosage->setMultiLine(true);
        auto& addButton = add<Button>(u"CmdAdd"_s);
        addButton.setCaption(u"&Add"_s);
        addButton.onClick = [this] { Add(); };
        auto& cancel = add<Button>(u"CmdCancel"_s);
        cancel.setCaption(u"&Cancel"_s);
        cancel.setCausesValidation(false);
        cancel.onClick = [this] {
            if (prompter().ask(u"Are You Sure, You want to Abort ?"_s))
                close();
        };
    }

    void load() override {
        setCaption(u"Adding New Brand"_s);
        const QString none = u"NONE"_s;
        m_brand.name = inputs.value(u"GetBrandName"_s).toString().trimmed().toUpper();
        m_brand.drug = EnsureNoneDrug(db());
        m_brand.group = EnsureSentinel(db(), u"GroupName"_s, none);
        m_brand.subGroup =
            m_brand.group > 0 ? EnsureSentinel(db(), u"SubGroup"_s, none, u"GroupCode"_s, m_brand.group) : 0;
        m_brand.company = EnsureSentinel(db(), u"Manufacturer"_s, u"TO BE UPDATED LATER"_s);
        FillRows(db(), *m_forms, u"SELECT Code, Name FROM DosageForm ORDER BY Name"_s);
        FillRows(db(), *m_company, u"SELECT Code, Name FROM Manufacturer ORDER BY Name"_s);
        qobject_cast<TextBox*>(control(u"TxtName"_s))->setText(m_brand.name);
        qobject_cast<TextBox*>(control(u"TxtGroup"_s))->setText(none);
        qobject_cast<TextBox*>(control(u"TxtDrug"_s))->setText(none);
        ShowComboCode(*m_company, m_brand.company);
        m_composition->setText(u"SEE LIT."_s);
        m_dosage->setText(u"SEE LIT."_s);
        setFocus(*m_forms);
    }

    void activate() override {
        if (!firstActivation())
            return;
        if (m_brand.drug <= 0 || m_brand.group <= 0 || m_brand.subGroup <= 0 || m_brand.company <= 0) {
            prompter().stop(u"Error while Gathering Information for New Brand. Unable to Proceed."_s);
            close();
        }
    }

private:
    // The prescribed form is one of the forms ticked.
    void offerTickedForms() {
        const QString chosen = m_form->text();
        std::vector<ListRow> ticked;
        for (const ListRow& row : m_forms->rows()) {
            if (row.ticked)
                ticked.push_back({row.code, row.columns, false});
        }
        m_form->setRows(std::move(ticked));
        m_form->setText(ChosenCode(*m_form) > 0 ? chosen : QString());
    }

    bool inList(ComboBox& combo, const QString& message) {
        if (combo.text().trimmed().isEmpty() || ChosenCode(combo) > 0)
            return true;
        prompter().stop(message);
        return false;
    }

    void Add() {
        m_brand.forms.clear();
        for (const ListRow& row : m_forms->rows()) {
            if (row.ticked)
                m_brand.forms.append(row.code.toLongLong());
        }
        if (m_brand.forms.isEmpty())
            return refuse(u"Please Select the Dosage Form(s) for the New Brand."_s, *m_forms);
        if (m_form->text().trimmed().isEmpty())
            return refuse(u"Please Select the Dosage Form Prescribed."_s, *m_form);
        if (m_composition->text().trimmed().isEmpty())
            return refuse(u"Brand Composition Cannot be Left Blank."_s, *m_composition);
        if (m_dosage->text().trimmed().isEmpty())
            return refuse(u"Brand Dosage Details Cannot be Left Blank."_s, *m_dosage);
        if (m_company->text().trimmed().isEmpty())
            return refuse(u"Please Select the Manufacturer of the New Brand."_s, *m_company);
        m_brand.prescribedForm = ChosenCode(*m_form);
        m_brand.company = ChosenCode(*m_company);
        m_brand.composition = m_composition->text();
        m_brand.dosage = m_dosage->text();
        if (m_brand.name.isEmpty() || m_brand.prescribedForm <= 0 || m_brand.company <= 0 ||
            m_brand.drug <= 0 || m_brand.group <= 0 || m_brand.subGroup <= 0) {
            prompter().stop(u"Incomplete Informations."_s);
            return;
        }
        const qint64 code = AddNewBrand(db(), m_brand);
        if (code <= 0) {
            prompter().stop(u"Error while Adding New Brand. "_s + QString::number(db().lastErrorNumber()) +
                            u" - "_s + db().lastError());
            return;
        }
        outputs.insert(u"GetNewBrandCode"_s, code);
        outputs.insert(u"GetNewDsgCode"_s, m_brand.prescribedForm);
        close();
    }

    void refuse(const QString& message, Control& field) {
        prompter().stop(message);
        setFocus(field);
    }

    NewBrand m_brand;
    ListBox* m_forms = nullptr;
    ComboBox* m_form = nullptr;
    ComboBox* m_company = nullptr;
    TextBox* m_composition = nullptr;
    TextBox* m_dosage = nullptr;
};

VANTREL_SCREEN(FrmNewBrand);

} // namespace vantrel
