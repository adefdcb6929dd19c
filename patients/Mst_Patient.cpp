#include "core/Host.h"
#include "core/KeyFilters.h"
#include "core/Lookup.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "core/Routines.h"
#include "core/Screen.h"
#include "masters/Checks.h"
#include "patients/HistoryGrids.h"
#include "prescription/Staging.h"
#include "store/Database.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

const QString Browsing = u"111111110011"_s;
const QString Editing = u"000000001100"_s;
const QString NoRecords = u"000010000001"_s;

enum class PatientButton { Top = 0, Back, Next, Last, New, Edit, Delete, Find, Save, Cancel, Print, Quit };

constexpr int Index(PatientButton b) {
    return static_cast<int>(b);
}

KeyResult Digits(int key, const QString& text, int selStart) {
    return KeyDecimal(key, 3, 0, text, selStart);
}

const char16_t* const Histories[] = {u"PatientPhysical", u"PatientAllergy", u"PatientPersonal",
                                     u"PatientPast", u"PatientFamily"};

} // namespace

// The register of patients: who they are, their family head, birth and age, contact, employer and sponsor,
// body measures and the four history lists. Other screens open it to add or change the patient they hold.
class Mst_Patient : public Screen {
public:
    explicit Mst_Patient(Process& process) : Screen(process, u"Mst_Patient"_s) {
        colourFamily = u"Master"_s;
        const QStringList names{u"First Name"_s, u"Middle Name"_s, u"Last Name"_s};
        for (int i = 0; i < 3; ++i) {
            auto& box = add<TextBox>(u"TxtSName"_s, i);
            box.setCaption(names.at(i));
            box.keyFilter = [](int key, const QString& text, int at) { return KeyName(key, text, at); };
        }
        add<TextBox>(u"TxtFather"_s).keyFilter = [](int key, const QString& text, int at) {
            return KeyName(key, text, at);
        };
        auto& head = add<CheckBox>(u"ChkHOF"_s);
        head.setCaption(u"Head of the Family"_s);
        head.onClick = [this] { headTicked(); };
        add<ComboBox>(u"CmbRelation"_s);
        add<ComboBox>(u"CmbHOF"_s);
        auto& birth = add<DateBox>(u"SsDateBirth"_s);
        birth.onValidate = [this] { return birthLeave(); };
        const QStringList ages{u"Year(s)"_s, u"Month(s)"_s, u"Day(s)"_s};
        for (int i = 0; i < 3; ++i) {
            auto& box = add<TextBox>(u"TxtAge"_s, i);
            box.setCaption(ages.at(i));
            box.keyFilter = Digits;
            box.onValidate = [this, i] { return ageLeave(i); };
        }
        for (const auto& [name, caption] :
             {std::pair{u"OptSex1"_s, u"Male"_s}, std::pair{u"OptSex2"_s, u"Female"_s}}) {
            auto& option = add<OptionButton>(name);
            option.setCaption(caption);
            option.group = u"Sex"_s;
            option.onClick = [this] { showStatus(); };
        }
        add<TextBox>(u"TxtAddress"_s).setMultiLine(true);
        auto& city = add<ComboBox>(u"DBCCity"_s);
        city.onValidate = [this, &city] {
            return addOnTheSpot(city, u"City"_s,
                                u"City Name Does Not Exist In List. Want to Add the Same in List ?"_s);
        };
        for (const QString& name : {u"TxtPinCode"_s, u"TxtPhone"_s, u"TxtMobile"_s, u"TxtEmail"_s})
            add<TextBox>(name);
        add<ComboBox>(u"CmbCompany"_s);
        add<TextBox>(u"TxtEmployeeID"_s);
        add<ComboBox>(u"CmbPayer"_s);
        for (const auto& [name, limit, question] :
             {std::tuple{u"TxtHeight"_s, 240.0, u"Ab-Normal Patient's Height. Want to Continue ?"_s},
              std::tuple{u"TxtWeight"_s, 150.0, u"Ab-Normal Patient's Weight. Want to Continue ?"_s},
              std::tuple{u"TxtApgar"_s, 10.0, u"Ab-Normal Patient's Apgar Score. Want to Continue ?"_s}}) {
            auto& box = add<TextBox>(name);
            box.keyFilter = KeyMeasure;
            box.onValidate = [this, &box, limit, question] {
                if (m_mode == 0 || MeasureOf(box.text()) <= limit || prompter().ask(question)) {
                    showStatus();
                    return true;
                }
                return false;
            };
        }
        add<Label>(u"Lbl1"_s).setCaption(u"Obesity"_s);
        auto& status = add<TextBox>(u"TxtObesity"_s);
        status.setLocked(true);
        status.setTabStop(false);
        add<ComboBox>(u"CmbBlood"_s).editable = false;
        add<ComboBox>(u"CmbRh"_s).editable = false;
        add<ComboBox>(u"CmbMarital"_s).editable = false;
        add<ComboBox>(u"CmbReligion"_s).editable = false;
        auto& occupation = add<ComboBox>(u"CmbOccupation"_s);
        occupation.onValidate = [this, &occupation] {
            return addOnTheSpot(occupation, u"Occupation"_s,
                                u"Occupation Does Not Exist In List. Want to Add the Same in List ?"_s);
        };
        for (const QString& name : {u"TxtLastNo"_s, u"TxtLastDate"_s}) {
            auto& box = add<TextBox>(name);
            box.setLocked(true);
            box.setTabStop(false);
        }
        auto& tabs = add<TabStrip>(u"SsTabHistory"_s);
        tabs.tabs = {u"Patient Details"_s, u"Allergies"_s, u"Personal"_s, u"Past"_s, u"Family"_s};
        tabs.setTabStop(false);
        m_history = std::make_unique<HistoryGrids>(*this, u"TmpPatient"_s, u"SsTabHistory"_s);
        auto& physical = add<Button>(u"Cmd_Phy"_s);
        physical.setCaption(u"Ph&ysical Examinations"_s);
        physical.onClick = [this] {
            this->process().openModal(u"FrmPhysical"_s, [this](Screen& dialog) {
                dialog.inputs.insert(u"ExaminationSource"_s, u"P"_s);
                dialog.inputs.insert(u"ReadOnly"_s, m_mode == 0);
            });
        };
        const QStringList captions{u"&Top"_s,  u"&Back"_s,   u"&Next"_s,   u"&Last"_s,
                                   u"Ne&w"_s,  u"&Edit"_s,   u"&Delete"_s, u"&Find"_s,
                                   u"&Save"_s, u"&Cancel"_s, u"&Print"_s,  u"&Quit"_s};
        for (int i = 0; i < captions.size(); ++i) {
            auto& b = add<Button>(u"Cmd"_s, i);
            b.setCaption(captions.at(i));
            b.setCausesValidation(i != Index(PatientButton::Cancel) && i != Index(PatientButton::Quit));
            b.onClick = [this, i] { button(i); };
        }
    }

    void load() override {
        m_caller = inputs.value(u"CallerId"_s).toInt();
        const bool existing = inputs.value(u"EditExisting"_s).toBool();
        if (m_caller == 0)
            setCaption(state().AppTitle + u"   [Patient Master]"_s);
        else
            setCaption(existing ? u"Editing Patient Details"_s : u"Adding New Patient"_s);
        fillLists();
        m_history->fillLists();
        if (m_caller > 0) {
            const qint64 patient = state().CurrentPatientCode;
            if (existing && !goTo(patient)) {
                m_missing = true;
                return;
            }
            if (existing) {
                enterEdit();
                control(u"OptSex1"_s)->setEnabled(false);
                control(u"OptSex2"_s)->setEnabled(false);
            } else {
                New();
            }
            return;
        }
        const auto last = db().first(u"SELECT Code FROM Patient ORDER BY Name DESC, Code DESC LIMIT 1"_s);
        if (last)
            goTo(last->integer(u"Code"_s));
        else
            showEmpty();
    }

    void activate() override {
        if (m_caller == 0)
            host().setMainTitle(caption());
        if (!firstActivation())
            return;
        if (qobject_cast<ComboBox*>(control(u"DBCCity"_s))->count() == 0) {
            prompter().stop(u"No City is Defined."_s);
            close();
        } else if (m_missing) {
            prompter().stop(u"Patient Record Missing. Critical Program Error."_s);
            close();
        }
    }

private:
    ComboBox& combo(const QString& name) const { return *qobject_cast<ComboBox*>(control(name)); }
    TextBox& box(const QString& name, int index = -1) const {
        return *qobject_cast<TextBox*>(control(name, index));
    }

    void fillLists() {
        FillRows(db(), combo(u"DBCCity"_s), u"SELECT Code, Name FROM City ORDER BY Name"_s);
        FillRows(db(), combo(u"CmbOccupation"_s), u"SELECT Code, Name FROM Occupation ORDER BY Name"_s);
        FillRows(db(), combo(u"CmbRelation"_s), u"SELECT Code, Relation FROM Relation ORDER BY Relation"_s);
        FillRows(db(), combo(u"CmbCompany"_s),
                 u"SELECT Code, CompanyName FROM Company ORDER BY CompanyName"_s);
        FillRows(db(), combo(u"CmbPayer"_s), u"SELECT Code, PayerName FROM Payer ORDER BY PayerName"_s);
        const auto fixed = [this](const QString& name, const QStringList& items) {
            std::vector<ListRow> rows;
            for (const QString& item : items)
                rows.push_back({item, {item}});
            combo(name).setRows(std::move(rows));
        };
        fixed(u"CmbBlood"_s, {u"O"_s, u"A"_s, u"B"_s, u"AB"_s});
        fixed(u"CmbRh"_s, {u"+ve"_s, u"-ve"_s});
        fixed(u"CmbMarital"_s, {u"UN-MARRIED"_s, u"MARRIED"_s});
        fixed(u"CmbReligion"_s, {u"HINDU"_s, u"MUSLIM"_s, u"SIKH"_s, u"CHRISTIAN"_s});
    }

    // The family heads a patient may belong to: never the patient itself.
    void fillHeads(qint64 patient) {
        FillRows(db(), combo(u"CmbHOF"_s),
                 u"SELECT Code, Name FROM Patient WHERE Code <> ? AND IsHof ORDER BY Name"_s, {patient});
    }

    void button(int index) {
        switch (static_cast<PatientButton>(index)) {
        case PatientButton::Top:
            return move(u"SELECT Code FROM Patient ORDER BY Name, Code LIMIT 1"_s, {}, u"First Patient."_s);
        case PatientButton::Back:
            return move(u"SELECT Code FROM Patient WHERE Name < ? OR (Name = ? AND Code < ?) "
                        "ORDER BY Name DESC, Code DESC LIMIT 1"_s,
                        {m_name, m_name, m_code}, u"First Patient."_s);
        case PatientButton::Next:
            return move(u"SELECT Code FROM Patient WHERE Name > ? OR (Name = ? AND Code > ?) "
                        "ORDER BY Name, Code LIMIT 1"_s,
                        {m_name, m_name, m_code}, u"Last Patient."_s);
        case PatientButton::Last:
            return move(u"SELECT Code FROM Patient ORDER BY Name DESC, Code DESC LIMIT 1"_s, {},
                        u"Last Patient."_s);
        case PatientButton::New:
            return this->New();
        case PatientButton::Edit:
            return enterEdit();
        case PatientButton::Delete:
            return this->Delete();
        case PatientButton::Find:
            if (!ScreenRegistry::instance().has(u"Find_Patient"_s)) {
                prompter().info(u"Option Not Available."_s);
                return;
            }
            process().openModal(u"Find_Patient"_s);
            if (state().CurrentPatientCode > 0 && state().CurrentPatientCode != m_code)
                goTo(state().CurrentPatientCode);
            return;
        case PatientButton::Save:
            return this->Save();
        case PatientButton::Cancel:
            return this->Cancel();
        case PatientButton::Print:
            prompter().info(u"Option Not Available."_s);
            return;
        case PatientButton::Quit:
            close();
            return;
        }
    }

    // Top and Last always say where they stand; Back and Next only at the ends.
    void move(const QString& sql, const QVariantList& params, const QString& end) {
        const auto row = db().first(sql, params);
        const bool always = params.isEmpty();
        if (row)
            goTo(row->integer(u"Code"_s));
        if (!row || always)
            prompter().info(end);
    }

    bool goTo(qint64 code) {
        const auto row = db().first(u"SELECT * FROM Patient WHERE Code = ?"_s, {code});
        if (!row)
            return false;
        show(*row);
        setMode(0);
        return true;
    }

    void clearFields() {
        for (Control* c : controls()) {
            if (auto* text = qobject_cast<TextBox*>(c))
                text->setText({});
            else if (auto* list = qobject_cast<ComboBox*>(c)) {
                list->setCurrent(-1);
                list->setText({});
            } else if (auto* tick = qobject_cast<CheckBox*>(c))
                tick->setValue(false);
            else if (auto* option = qobject_cast<OptionButton*>(c))
                option->setValue(false);
        }
        qobject_cast<DateBox*>(control(u"SsDateBirth"_s))->setDate(state().clock.today());
        control(u"Lbl1"_s)->setCaption(u"Obesity"_s);
    }

    void show(const Row& row) {
        clearFields();
        m_code = row.integer(u"Code"_s);
        m_name = row.text(u"Name"_s);
        state().CurrentPatientCode = m_code;
        stageHistories(m_code);
        fillHeads(m_code);
        LoadPhysicalObservations(state(), u"P"_s, m_code);
        const QStringList names{row.text(u"FirstName"_s), row.text(u"MiddleName"_s), row.text(u"LastName"_s)};
        for (int i = 0; i < 3; ++i)
            box(u"TxtSName"_s, i).setText(names.at(i));
        box(u"TxtFather"_s).setText(row.text(u"father"_s));
        qobject_cast<CheckBox*>(control(u"ChkHOF"_s))->setValue(row.flag(u"IsHof"_s));
        ShowComboCode(combo(u"CmbRelation"_s), row.integer(u"HOFRelation"_s));
        ShowComboCode(combo(u"CmbHOF"_s), row.integer(u"FamilyHead"_s));
        const QDate birth = row.date(u"BirthDate"_s);
        qobject_cast<DateBox*>(control(u"SsDateBirth"_s))
            ->setDate(birth.isValid() ? birth : state().clock.today());
        showAge();
        const bool male = row.text(u"Sex"_s).trimmed().toUpper() == u"M"_s;
        qobject_cast<OptionButton*>(control(u"OptSex1"_s))->setValue(male);
        qobject_cast<OptionButton*>(control(u"OptSex2"_s))->setValue(!male);
        box(u"TxtAddress"_s).setText(row.text(u"Address"_s));
        ShowComboCode(combo(u"DBCCity"_s), row.integer(u"City"_s));
        box(u"TxtPinCode"_s).setText(row.text(u"PinCode"_s));
        box(u"TxtPhone"_s).setText(row.text(u"Phone"_s));
        box(u"TxtMobile"_s).setText(row.text(u"Mobile"_s));
        box(u"TxtEmail"_s).setText(row.text(u"PEmail"_s));
        ShowComboCode(combo(u"CmbCompany"_s), row.integer(u"Company"_s));
        box(u"TxtEmployeeID"_s).setText(row.text(u"EmployeeID"_s));
        ShowComboCode(combo(u"CmbPayer"_s), row.integer(u"Payer"_s));
        box(u"TxtHeight"_s).setText(MeasureText(row.real(u"PHeight"_s)));
        box(u"TxtWeight"_s).setText(MeasureText(row.real(u"PWeight"_s)));
        box(u"TxtApgar"_s).setText(MeasureText(row.real(u"ApgarScore"_s)));
        combo(u"CmbBlood"_s).setText(row.text(u"Blood"_s));
        combo(u"CmbRh"_s).setText(row.text(u"Rh"_s));
        combo(u"CmbMarital"_s).setText(row.text(u"Marital"_s));
        combo(u"CmbReligion"_s).setText(row.text(u"Religion"_s));
        combo(u"CmbOccupation"_s).setText(row.text(u"Occupation"_s));
        box(u"TxtLastNo"_s).setText(row.integer(u"Last_No"_s) > 0 ? row.text(u"Last_No"_s) : QString());
        const QDate last = row.date(u"Last_Date"_s);
        box(u"TxtLastDate"_s).setText(last.isValid() ? last.toString(u"dd/MMM/yyyy"_s) : QString());
        showStatus();
    }

    void stageHistories(qint64 patient) {
        LoadPatientHistoryToStaging(db(), patient, u"P"_s, u"TmpPatient"_s);
        m_history->reload();
    }

    void showAge() {
        const DateDiff age =
            DateDifference(state().clock.today(), qobject_cast<DateBox*>(control(u"SsDateBirth"_s))->date());
        box(u"TxtAge"_s, 0).setText(QString::number(age.years));
        box(u"TxtAge"_s, 1).setText(QString::number(age.months));
        box(u"TxtAge"_s, 2).setText(QString::number(age.days));
    }

    // Growth under 13 years, obesity from then on.
    void showStatus() {
        const int years = box(u"TxtAge"_s, 0).text().toInt();
        control(u"Lbl1"_s)->setCaption(years < 13 ? u"Growth"_s : u"Obesity"_s);
        box(u"TxtObesity"_s)
            .setText(WeightAssessment(years, box(u"TxtAge"_s, 1).text().toInt(),
                                      MeasureOf(box(u"TxtHeight"_s).text()),
                                      MeasureOf(box(u"TxtWeight"_s).text())));
    }

    bool birthLeave() {
        if (m_mode == 0)
            return true;
        showAge();
        showStatus();
        return true;
    }

    bool ageLeave(int index) {
        if (m_mode == 0)
            return true;
        const QString text = box(u"TxtAge"_s, index).text().trimmed();
        const int value = text.toInt();
        static const int limits[] = {100000, 11, 30};
        static const QStringList messages{u"Invalid Age."_s, u"Invalid Month."_s, u"Invalid Days."_s};
        if (value < 0 || value > limits[index]) {
            prompter().stop(messages.at(index));
            return false;
        }
        qobject_cast<DateBox*>(control(u"SsDateBirth"_s))
            ->setDate(BirthFromAge(state().clock.today(), box(u"TxtAge"_s, 0).text().toInt(),
                                   box(u"TxtAge"_s, 1).text().toInt(), box(u"TxtAge"_s, 2).text().toInt()));
        showStatus();
        return true;
    }

    // An occupation or a city not yet known is added to its list at once.
    bool addOnTheSpot(ComboBox& list, const QString& table, const QString& question) {
        const QString text = list.text().trimmed();
        if (m_mode == 0 || text.isEmpty() || ChosenCode(list) > 0)
            return true;
        if (!prompter().ask(question))
            return false;
        db().execute(u"INSERT INTO %1 (Name) VALUES (?)"_s.arg(table), {text});
        FillRows(db(), list, u"SELECT Code, Name FROM %1 ORDER BY Name"_s.arg(table));
        list.setText(text);
        list.setCurrent(list.findCode(db().lastInsertId()));
        return true;
    }

    void headTicked() {
        const bool head = qobject_cast<CheckBox*>(control(u"ChkHOF"_s))->value();
        if (head) {
            for (const QString& name : {u"CmbRelation"_s, u"CmbHOF"_s}) {
                combo(name).setText({});
                combo(name).setCurrent(-1);
            }
        }
        lockFields();
    }

    void setMode(int mode) {
        m_mode = mode;
        applyMask(u"Cmd"_s, mode == 0 ? Browsing : Editing);
        lockFields();
    }

    void lockFields() {
        const bool editing = m_mode > 0;
        const bool head = qobject_cast<CheckBox*>(control(u"ChkHOF"_s))->value();
        static const QStringList always{u"Cmd"_s,        u"SsTabHistory"_s, u"Cmd_Phy"_s,
                                        u"TxtObesity"_s, u"TxtLastNo"_s,    u"TxtLastDate"_s};
        for (Control* c : controls()) {
            if (always.contains(c->name()) || c->kind() == ControlKind::Label ||
                c->kind() == ControlKind::Grid || c->kind() == ControlKind::List)
                continue;
            bool on = editing;
            if (c->name() == u"CmbRelation"_s || c->name() == u"CmbHOF"_s)
                on = editing && !head;
            if (auto* text = qobject_cast<TextBox*>(c))
                text->setLocked(!on);
            else
                c->setEnabled(on);
        }
        // A head with members stays a head.
        if (m_mode == 2 && head && db().exists(u"SELECT 1 FROM Patient WHERE FamilyHead = ?"_s, {m_code}))
            control(u"ChkHOF"_s)->setEnabled(false);
        m_history->setEditable(editing);
        control(u"Cmd_Phy"_s)->setEnabled(state().CurrentPatientCode > 0 || editing);
    }

    void showEmpty() {
        clearFields();
        m_code = 0;
        m_name.clear();
        stageHistories(0);
        m_mode = 0;
        applyMask(u"Cmd"_s, NoRecords);
        lockFields();
        setFocus(*control(u"Cmd"_s, Index(PatientButton::New)));
    }

    void New() {
        clearFields();
        m_code = 0;
        state().CurrentPatientCode = 0;
        stageHistories(0);
        fillHeads(0);
        ClearPhysicalObservations(state());
        showAge();
        setMode(1);
        setFocus(*control(u"TxtSName"_s, 0));
    }

    void enterEdit() {
        setMode(2);
        setFocus(*control(u"TxtSName"_s, 0));
    }

    void Cancel() {
        if (m_caller > 0) {
            close();
            return;
        }
        if (!goTo(m_code)) {
            const auto last = db().first(u"SELECT Code FROM Patient ORDER BY Name DESC, Code DESC LIMIT 1"_s);
            if (!last || !goTo(last->integer(u"Code"_s)))
                showEmpty();
        }
    }

    bool refuse(const QString& message, const QString& field, int index = -1) {
        prompter().stop(message);
        setFocus(*control(field, index));
        return false;
    }

    bool valid() {
        const int years = box(u"TxtAge"_s, 0).text().toInt();
        const int months = box(u"TxtAge"_s, 1).text().toInt();
        const int days = box(u"TxtAge"_s, 2).text().toInt();
        const QDate birth = qobject_cast<DateBox*>(control(u"SsDateBirth"_s))->date();
        const bool hasHead = ChosenCode(combo(u"CmbHOF"_s)) > 0;
        const bool hasRelation = ChosenCode(combo(u"CmbRelation"_s)) > 0;
        const bool hasPayer = ChosenCode(combo(u"CmbPayer"_s)) > 0;
        const bool hasCompany = ChosenCode(combo(u"CmbCompany"_s)) > 0;
        const bool hasEmployee = !box(u"TxtEmployeeID"_s).text().trimmed().isEmpty();
        if (box(u"TxtSName"_s, 0).text().trimmed().isEmpty())
            return refuse(u"Patient First Name Should Not be Blank."_s, u"TxtSName"_s, 0);
        if (!birth.isValid())
            return refuse(u"Date of Birth Should Not be left Blank."_s, u"SsDateBirth"_s);
        if ((years == 0 && months == 0 && days == 0) || years < 0)
            return refuse(u"Invalid Age."_s, u"TxtAge"_s, 0);
        if (months < 0 || months > 11)
            return refuse(u"Invalid Month(s)."_s, u"TxtAge"_s, 1);
        if (days < 0 || days > 30)
            return refuse(u"Invalid Day(s)."_s, u"TxtAge"_s, 2);
        if (birth > state().clock.today())
            return refuse(u"Date of Birth Should Not be Greater than Current Date."_s, u"SsDateBirth"_s);
        if (hasHead && !hasRelation)
            return refuse(u"Relationship with the Family Head Cannot be left Blank."_s, u"CmbRelation"_s);
        if (hasRelation && !hasHead)
            return refuse(u"Name of Family Head Cannot be left Blank."_s, u"CmbHOF"_s);
        if (hasPayer && !hasCompany)
            return refuse(u"Name of Company Cannot be left Blank."_s, u"CmbCompany"_s);
        if (hasPayer && !hasEmployee)
            return refuse(u"Employee ID Cannot be left Blank."_s, u"TxtEmployeeID"_s);
        if (hasEmployee && !hasCompany)
            return refuse(u"Name of Company Cannot be left Blank."_s, u"CmbCompany"_s);
        return true;
    }

    void Save() {
        if (!valid())
            return;
        const bool adding = m_mode == 1;
        const QStringList parts{box(u"TxtSName"_s, 0).text().trimmed(),
                                box(u"TxtSName"_s, 1).text().trimmed(),
                                box(u"TxtSName"_s, 2).text().trimmed()};
        QString name = parts.at(0);
        for (int i = 1; i < 3; ++i) {
            if (!parts.at(i).isEmpty())
                name += u" "_s + parts.at(i);
        }
        const bool head = qobject_cast<CheckBox*>(control(u"ChkHOF"_s))->value();
        const qint64 city = ChosenCode(combo(u"DBCCity"_s));
        const QVariantList values{name,
                                  parts.at(0),
                                  parts.at(1),
                                  parts.at(2),
                                  box(u"TxtFather"_s).text().trimmed(),
                                  head,
                                  head ? 0 : std::max<qint64>(ChosenCode(combo(u"CmbRelation"_s)), 0),
                                  head ? 0 : std::max<qint64>(ChosenCode(combo(u"CmbHOF"_s)), 0),
                                  sqlDate(qobject_cast<DateBox*>(control(u"SsDateBirth"_s))->date()),
                                  qobject_cast<OptionButton*>(control(u"OptSex2"_s))->value() ? u"F"_s
                                                                                              : u"M"_s,
                                  box(u"TxtAddress"_s).text().trimmed(),
                                  city > 0 ? QVariant(city) : QVariant(),
                                  box(u"TxtPinCode"_s).text().trimmed(),
                                  box(u"TxtPhone"_s).text().trimmed(),
                                  box(u"TxtMobile"_s).text().trimmed(),
                                  box(u"TxtEmployeeID"_s).text().trimmed(),
                                  std::max<qint64>(ChosenCode(combo(u"CmbCompany"_s)), 0),
                                  std::max<qint64>(ChosenCode(combo(u"CmbPayer"_s)), 0),
                                  MeasureOf(box(u"TxtHeight"_s).text()),
                                  MeasureOf(box(u"TxtWeight"_s).text()),
                                  combo(u"CmbBlood"_s).text(),
                                  combo(u"CmbRh"_s).text(),
                                  MeasureOf(box(u"TxtApgar"_s).text()),
                                  combo(u"CmbMarital"_s).text(),
                                  combo(u"CmbReligion"_s).text(),
                                  combo(u"CmbOccupation"_s).text().trimmed(),
                                  box(u"TxtEmail"_s).text().trimmed()};
        static const QString columns =
            u"Name, FirstName, MiddleName, LastName, father, IsHof, HOFRelation, FamilyHead, BirthDate, Sex, "
            "Address, City, PinCode, Phone, Mobile, EmployeeID, Company, Payer, PHeight, PWeight, Blood, Rh, "
            "ApgarScore, Marital, Religion, Occupation, PEmail"_s;
        qint64 code = m_code;
        bool ok = false;
        {
            Transaction tx(db());
            ok = tx.active();
            if (ok && adding) {
                QVariantList insert = values;
                insert.append(sqlDate(state().clock.today()));
                QStringList marks;
                for (qsizetype i = 0; i < insert.size(); ++i)
                    marks << u"?"_s;
                ok = db().execute(u"INSERT INTO Patient (%1, ExamDate) VALUES (%2)"_s.arg(
                                      columns, marks.join(u", "_s)),
                                  insert) >= 0;
                code = ok ? db().lastInsertId() : 0;
            } else if (ok) {
                QStringList sets;
                for (const QString& column : columns.split(u", "_s))
                    sets << column + u" = ?"_s;
                QVariantList update = values;
                update.append(code);
                ok = db().execute(u"UPDATE Patient SET %1 WHERE Code = ?"_s.arg(sets.join(u", "_s)),
                                  update) >= 0;
            }
            for (const PhysicalEntry& entry : state().PhysicalList) {
                if (ok && !adding)
                    ok = db().execute(
                             u"DELETE FROM PatientPhysical WHERE PatientCode = ? AND PhysicalCode = ?"_s,
                             {code, entry.Code}) >= 0;
                if (ok && !entry.Observation.trimmed().isEmpty())
                    ok = db().execute(u"INSERT INTO PatientPhysical (PatientCode, PhysicalCode, Observation) "
                                      "VALUES (?, ?, ?)"_s,
                                      {code, entry.Code, entry.Observation.trimmed()}) >= 0;
            }
            if (!adding) {
                for (const char16_t* table : Histories) {
                    if (ok && QString::fromUtf16(table) != u"PatientPhysical"_s)
                        ok = db().execute(
                                 u"DELETE FROM %1 WHERE PatientCode = ?"_s.arg(QString::fromUtf16(table)),
                                 {code}) >= 0;
                }
            }
            ok = ok && SaveHistoryFromStaging(db(), u"TmpPatient"_s, u"Patient"_s, u"PatientCode"_s, code);
            ok = ok && tx.commit();
        }
        if (!ok) {
            prompter().stop(u"Error While Saving Patient Details "_s + db().lastError());
            return;
        }
        state().CurrentPatientCode = code;
        outputs.insert(u"PatientCode"_s, code);
        if (m_caller > 0) {
            close();
            return;
        }
        goTo(code);
        prompter().info(u"Patient "_s + (adding ? u"Added."_s : u"Updated."_s));
    }

    void Delete() {
        if (state().RunMode == 2 && !state().Params.flag(u"AllowDelPatient"_s)) {
            prompter().info(u"Removal (Deletion) of Patient(s) is Not Allowed."_s);
            return;
        }
        if (!prompter().ask(u"Delete Current Patient ?"_s))
            return;
        if (IsCodeInUse(state(), m_code, u"PATIENT"_s)) {
            prompter().stop(u"Can not Delete the Patient in Use."_s);
            return;
        }
        if (qobject_cast<CheckBox*>(control(u"ChkHOF"_s))->value() &&
            db().exists(u"SELECT Code FROM Patient WHERE FamilyHead = ?"_s, {m_code})) {
            prompter().stop(
                u"Patient is Head of the Family For One or More Patient(s). Cannot be Deleted."_s);
            return;
        }
        bool ok = false;
        {
            Transaction tx(db());
            ok = tx.active();
            for (const char16_t* table : Histories)
                ok = ok &&
                     db().execute(u"DELETE FROM %1 WHERE PatientCode = ?"_s.arg(QString::fromUtf16(table)),
                                  {m_code}) >= 0;
            ok = ok && db().execute(u"DELETE FROM Patient WHERE Code = ?"_s, {m_code}) >= 0 && tx.commit();
        }
        if (!ok) {
            prompter().stop(u"Error while Deleting the Selected Patient. "_s + db().lastError());
            return;
        }
        const auto first = db().first(u"SELECT Code FROM Patient ORDER BY Name, Code LIMIT 1"_s);
        if (!first || !goTo(first->integer(u"Code"_s)))
            showEmpty();
    }

    std::unique_ptr<HistoryGrids> m_history;
    // Who opened the screen: 0 the launcher, 1 the prescription, 2 immunization, 3 the OPD card, 4 the visit.
    int m_caller = 0;
    bool m_missing = false;
    int m_mode = 0;
    qint64 m_code = 0;
    QString m_name;
};

VANTREL_SCREEN(Mst_Patient);

} // namespace vantrel
