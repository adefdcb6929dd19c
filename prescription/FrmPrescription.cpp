#include "prescription/FrmPrescription.h"

#include "core/Host.h"
#include "core/Lookup.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "core/Routines.h"
#include "core/Startup.h"
#include "patients/HistoryGrids.h"
#include "prescription/Staging.h"
#include "readymade/ReadyMade.h"
#include "store/Database.h"

#include <QLocale>
#include <tuple>

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

const QString NoRecords = u"000010000001"_s;
const QString Browsing = u"111111110011"_s;
const QString Editing = u"000000001100"_s;

enum CtlButton { Top = 0, Back, Next, Last, New, Edit, Delete, Find, Save, Cancel, Print, Quit };

// The toggles of the patient's states, by ChkSafety number, and the state each one sets.
struct Toggle {
    const char16_t* caption;
    int field;
};
constexpr Toggle Toggles[] = {{u"Paediatric", 3},          {u"Pregnancy", 1},
                              {u"Lactation", 2},           {u"Liver Insufficiency", 6},
                              {u"Renal Insufficiency", 5}, {u"Pulmonary Insufficiency", 7}};
constexpr int Paediatric = 0, Pregnancy = 1, Lactation = 2;

// The state flags of PresHead by SafeFieldCode.
const char16_t* const StateColumns[] = {nullptr,    u"Pregnancy", u"Lactation", u"Paediatric",
                                        u"Elderly", u"Renal",     u"Liver",     u"Pulmonary"};

// The staged lists and the rows Save leaves behind as incomplete.
struct StagedList {
    const char16_t* staging;
    const char16_t* incomplete;
};
const StagedList Purges[] = {
    {u"TmpDet", u"Code IS NULL OR Code = '' OR Code = 0"},
    {u"TmpComplaint", u"ComplaintCode IS NULL OR ComplaintCode = '' OR ComplaintCode = 0"},
    {u"TmpDisease", u"DiseaseCode IS NULL OR DiseaseCode = '' OR DiseaseCode = 0"},
    {u"TmpSurgery", u"SurgeryCode IS NULL OR SurgeryCode = '' OR SurgeryCode = 0"},
    {u"TmpInvestigation", u"PrescriptionCode IS NULL OR PrescriptionCode = '' OR PrescriptionCode <> :code "
                          u"OR InvestigationCode IS NULL OR InvestigationCode = '' OR InvestigationCode = 0"},
};

// Staging copied into the prescription's tables at Save, in this order.
const char16_t* const Copies[] = {
    u"INSERT INTO PresDet (Code, GenericCode, DsgFmCode, SymbolCode, DsgRemarkCode, Dosage) "
    u"SELECT :code, Code, DsgFmCode, SymbolCode, DsgRemarkCode, Dosage FROM TmpDet ORDER BY rowid",
    u"INSERT INTO PresComplaint (PrescriptionCode, ComplaintCode, Notes) "
    u"SELECT :code, ComplaintCode, Notes FROM TmpComplaint ORDER BY rowid",
    u"INSERT INTO PresDisease (PrescriptionCode, DiseaseCode, Notes) "
    u"SELECT :code, DiseaseCode, Notes FROM TmpDisease ORDER BY rowid",
    u"INSERT INTO PresSurgery (PrescriptionCode, SurgeryCode, Notes) "
    u"SELECT :code, SurgeryCode, Notes FROM TmpSurgery ORDER BY rowid",
    u"INSERT INTO PatientInvestigation SELECT PrescriptionCode, InvestigationCode, InvestigationDate, "
    u"ResultType, "
    u"mUnit, NormalNumFrom, NormalNumTo, NormalPositive, NormalYes, Amount, ResultNumeric, ResultPositive, "
    u"ResultYes, ResultText, Conclusion FROM TmpInvestigation ORDER BY rowid",
    u"DELETE FROM TmpPhotoID WHERE PrescriptionCode IS NULL OR PrescriptionCode = '' OR PhotoID IS NULL",
    u"INSERT INTO PhotoID SELECT * FROM TmpPhotoID",
};

// The prescription's child tables, cleared before an edited prescription is written again and when it is
// deleted; PresPhysical is treated apart.
const char16_t* const Children[] = {u"PresComplaint",        u"PresDisease", u"PresSurgery",  u"PresAdvised",
                                    u"PatientInvestigation", u"PresAllergy", u"PresPersonal", u"PresPast",
                                    u"PresFamily",           u"PhotoID"};

// A statement written with the named value :code, run with the prescription number bound to each use.
int RunWithCode(Database& db, const QString& sql, qint64 code) {
    QString positional = sql;
    QVariantList params;
    for (qsizetype at = positional.indexOf(u":code"_s); at >= 0; at = positional.indexOf(u":code"_s, at)) {
        positional.replace(at, 5, u"?"_s);
        params.append(code);
    }
    return db.execute(positional, params);
}

// The patients the prescription may be written for, with what tells them apart.
const QString PatientListSql =
    u"SELECT Code, Name, CASE WHEN Sex = 'M' THEN 'Male' ELSE 'Female' END AS mSex, "
    "BirthDate, Father, Blood, Rh, PHeight, PWeight FROM Patient ORDER BY Name"_s;

bool IsBrandFilter(const QString& name) {
    return name == u"CmbPharma"_s || name == u"CmbIndication"_s || name == u"CmbGroup"_s ||
           name == u"CmbCompany"_s;
}

KeyResult Digits(int key, const QString& text, int selStart) {
    return KeyDecimal(key, 9, 0, text, selStart);
}

KeyResult Amount(int key, const QString& text, int selStart) {
    return KeyDecimal(key, 7, 2, text, selStart);
}

} // namespace

FrmPrescription::FrmPrescription(Process& process) : Screen(process, u"FrmPrescription"_s) {
    colourFamily = u"Prescription"_s;
    addControls();
}

// ---------------------------------------------------------------------------------------------------------
// Controls, in the order Enter and Tab follow them.

void FrmPrescription::addControls() {
    auto& number = add<TextBox>(u"TxtNo"_s);
    number.keyFilter = Digits;
    number.onValidate = [this] { return goToNumber(); };
    auto& date = add<DateBox>(u"PresDate"_s);
    date.onValidate = [this] { return presDateLeave(); };
    add<ComboBox>(u"Cmb_OPDNo"_s).setCaption(u"OPD Card No."_s);
    add<ComboBox>(u"Cmb_VisitNo"_s).setCaption(u"Visit No."_s);
    const QStringList presCaptions{u"&Readymade"_s, u"Do&wnload"_s};
    for (int i = 0; i < presCaptions.size(); ++i) {
        auto& b = add<Button>(u"CmdPres"_s, i);
        b.setCaption(presCaptions.at(i));
        b.onClick = [this] { notAvailable(); };
    }
    addPatientControls();

    auto& tabs = add<TabStrip>(u"SsTabMain"_s);
    tabs.tabs = {u"&Prescription"_s, u"In&vestigations"_s, u"I&mages"_s};
    tabs.setTabStop(false);
    addBrandControls();

    auto& complaints = add<TabStrip>(u"SsTabComplaint"_s);
    complaints.tabs = {u"Complaints"_s, u"Diagnosis"_s, u"Procedures"_s};
    complaints.setTabStop(false);
    addClinicalLists();
    auto& examination = add<TextBox>(u"TxtExamination"_s);
    examination.setMultiLine(true);
    auto& notes = add<TextBox>(u"TxtNotes"_s);
    notes.setMultiLine(true);

    auto& advised = add<ListBox>(u"LstInvestigation"_s);
    advised.placeOnTab(u"SsTabMain"_s, 1);

    auto& amount = add<TextBox>(u"TxtAmount"_s);
    amount.keyFilter = Amount;
    const QStringList payCaptions{u"Cash"_s, u"Cheque"_s, u"Credit"_s};
    const QStringList payNames{u"OptCash"_s, u"OptCheque"_s, u"OptCredit"_s};
    for (int i = 0; i < payNames.size(); ++i) {
        auto& option = add<OptionButton>(payNames.at(i));
        option.setCaption(payCaptions.at(i));
        option.group = u"PayMode"_s;
        option.onClick = [this] {
            // The cheque number is kept for a cheque only.
            auto* cheque = qobject_cast<TextBox*>(control(u"Txt_ChequeNo"_s));
            const bool isCheque = qobject_cast<OptionButton*>(control(u"OptCheque"_s))->value();
            if (!isCheque)
                cheque->setText({});
            cheque->setEnabled(isCheque && PresMode > 0);
        };
    }
    add<TextBox>(u"Txt_ChequeNo"_s).setMaxLength(50);
    auto& checkUp = add<DateBox>(u"SsDateCheckUp"_s);
    checkUp.onValidate = [this] { return checkUpLeave(); };
    add<TextBox>(u"TxtNVRemark"_s).setMaxLength(250);
    add<ComboBox>(u"Cmb_RefBy"_s);

    const QStringList captions{u"&Top"_s,    u"&Back"_s, u"&Next"_s, u"&Last"_s,   u"Ne&w"_s,   u"&Edit"_s,
                               u"&Delete"_s, u"&Find"_s, u"&Save"_s, u"&Cancel"_s, u"&Print"_s, u"&Quit"_s};
    for (int i = 0; i < captions.size(); ++i) {
        auto& b = add<Button>(u"CmdCtlButton"_s, i);
        b.setCaption(captions.at(i));
        b.setCausesValidation(i != CtlButton::Cancel && i != CtlButton::Quit);
        b.onClick = [this, i] {
            switch (i) {
            case CtlButton::Top:
                return this->Top();
            case CtlButton::Back:
                return this->Back();
            case CtlButton::Next:
                return this->Next();
            case CtlButton::Last:
                return this->Last();
            case CtlButton::New:
                return this->New();
            case CtlButton::Edit:
                return this->Edit();
            case CtlButton::Delete:
                return this->Delete();
            case CtlButton::Find:
                return this->Find();
            case CtlButton::Save:
                return this->Save();
            case CtlButton::Cancel:
                return this->Cancel();
            case CtlButton::Print:
                return notAvailable();
            default:
                return close();
            }
        };
    }

    for (const QString& strip : {u"SsTabMain"_s, u"SsTabComplaint"_s, u"SsTabSearch"_s})
        qobject_cast<TabStrip*>(control(strip))->guard = [this](int) { return patientChosen(); };

    // The fields of the prescription wait for its patient.
    for (Control* c : controls()) {
        static const QStringList free{u"TxtNo"_s,      u"PresDate"_s,    u"Cmb_OPDNo"_s, u"Cmb_VisitNo"_s,
                                      u"CmdPres"_s,    u"Cmb_Patient"_s, u"TxtAmount"_s, u"CmdCtlButton"_s,
                                      u"CmdPatient"_s, u"OptCash"_s,     u"OptCheque"_s, u"OptCredit"_s};
        if (!free.contains(c->name()) && c->kind() != ControlKind::Label &&
            c->kind() != ControlKind::TabStrip)
            guard(*c);
    }
}

void FrmPrescription::addPatientControls() {
    auto& patient = add<ComboBox>(u"Cmb_Patient"_s);
    patient.columnHeadings = {u"Patient's Name"_s, u"Sex"_s, u"Birth Date"_s, u"Guardian"_s,
                              u"Blood"_s,          u"Rh"_s,  u"Height"_s,     u"Weight"_s};
    patient.onValidate = [this] { return patientLeave(); };
    patient.onClick = [this] {
        auto& combo = *qobject_cast<ComboBox*>(control(u"Cmb_Patient"_s));
        if (PresMode == 1)
            selectPatient(combo.currentCode().toLongLong());
    };
    for (const QString& name : {u"TxtFather"_s, u"TxtSex"_s, u"TxtDOB"_s, u"TxtAge"_s, u"TxtBlood"_s}) {
        auto& box = add<TextBox>(name);
        box.setLocked(true);
        box.setTabStop(false);
    }
    auto& tabs = add<TabStrip>(u"SsTabPatient"_s);
    tabs.tabs = {u"Vitals"_s, u"Allergies"_s, u"Personal"_s, u"Past"_s, u"Family"_s};
    tabs.setTabStop(false);
    tabs.guard = [this](int) { return patientChosen(); };
    const QStringList vitals{u"TxtHt"_s, u"TxtWt"_s, u"TxtTemp"_s, u"TxtPulse"_s, u"TxtBPS"_s, u"TxtBPD"_s};
    for (const QString& name : vitals) {
        auto& box = add<TextBox>(name);
        box.keyFilter = KeyMeasure;
        box.setMaxLength(6);
        box.placeOnTab(u"SsTabPatient"_s, 0);
    }
    // Height and weight are asked about when out of the usual range, and the body's measures follow them.
    for (const auto& [name, limit, question] :
         {std::tuple{u"TxtHt"_s, 240.0, u"Ab-Normal Patient's Height. Want to Continue ?"_s},
          std::tuple{u"TxtWt"_s, 150.0, u"Ab-Normal Patient's Weight. Want to Continue ?"_s}}) {
        auto& box = *qobject_cast<TextBox*>(control(name));
        box.onGotFocus = [this, &box] { m_measureShown = box.text(); };
        box.onValidate = [this, &box, limit, question] {
            if (PresMode == 0 || box.text() == m_measureShown)
                return true;
            if (MeasureOf(box.text()) > limit && !prompter().ask(question))
                return false;
            m_measureShown = box.text();
            qobject_cast<TextBox*>(control(u"TxtObesity"_s))
                ->setText(WeightAssessment(m_age.years, m_age.months,
                                           MeasureOf(qobject_cast<TextBox*>(control(u"TxtHt"_s))->text()),
                                           MeasureOf(qobject_cast<TextBox*>(control(u"TxtWt"_s))->text())));
            return true;
        };
    }
    auto& obesityCaption = add<Label>(u"LblObesity"_s);
    obesityCaption.setCaption(u"Obesity"_s);
    auto& obesity = add<TextBox>(u"TxtObesity"_s);
    obesity.placeOnTab(u"SsTabPatient"_s, 0);
    for (int i = 0; i < 6; ++i) {
        auto& toggle = add<CheckBox>(u"ChkSafety"_s, i);
        toggle.setCaption(QString::fromUtf16(Toggles[i].caption));
        toggle.placeOnTab(u"SsTabPatient"_s, 0);
        toggle.onClick = [this, i] { toggleState(i); };
    }
    for (const QString& name : {u"SSDateLMP"_s, u"SsDateEDD"_s})
        add<DateBox>(name).placeOnTab(u"SsTabPatient"_s, 0);
    control(u"SSDateLMP"_s)->onValidate = [this] { return lmpLeave(); };
    for (const QString& name : {u"TxtPregStatus"_s, u"TxtLD"_s, u"TxtParity"_s, u"TxtAbortion"_s})
        add<TextBox>(name).placeOnTab(u"SsTabPatient"_s, 0);

    m_history = std::make_unique<HistoryGrids>(*this, u"TmpPres"_s, u"SsTabPatient"_s);

    const QStringList patientButtons{u"&New Patient"_s,
                                     u"&Edit Patient"_s,
                                     u"Fin&d Patient"_s,
                                     u"Patient Inf&o..."_s,
                                     u"Patient's &History"_s,
                                     u"Ph&ysical Examinations"_s,
                                     u"Coronary R&isk Prediction"_s,
                                     u"Snap Shot Co&mparison"_s};
    for (int i = 0; i < patientButtons.size(); ++i) {
        auto& b = add<Button>(u"CmdPatient"_s, i);
        b.setCaption(patientButtons.at(i));
        b.onClick = [this, i] { patientButton(i); };
    }
}

bool FrmPrescription::patientChosen() {
    if (PresMode == 0 || state().CurrentPatientCode > 0)
        return true;
    prompter().info(u"Please Select the Patient First."_s);
    setFocus(u"Cmb_Patient"_s);
    return false;
}

void FrmPrescription::guard(Control& control) {
    const auto previous = control.onGotFocus;
    control.onGotFocus = [this, &control, previous] {
        if (guardFocus(control) && previous)
            previous();
    };
}

bool FrmPrescription::guardFocus(Control& control) {
    return focus() != &control || patientChosen();
}

void FrmPrescription::notAvailable() {
    prompter().info(u"Option Not Available."_s);
}

// ---------------------------------------------------------------------------------------------------------
// Opening.

void FrmPrescription::load() {
    setCaption(state().AppTitle + u"   [Prescriptions Writing]"_s);
    fillLists();
    const QVariant last = db().scalar(u"SELECT MAX(Code) FROM PresHead"_s);
    if (!last.isNull()) {
        goTo(last.toLongLong());
        setMode(0);
    } else {
        showEmpty();
    }
    for (const QString& strip : {u"SsTabMain"_s, u"SsTabPatient"_s, u"SsTabComplaint"_s, u"SsTabSearch"_s})
        qobject_cast<TabStrip*>(control(strip))->setCurrent(0);
}

void FrmPrescription::activate() {
    host().setMainTitle(caption());
    if (!firstActivation())
        return;
    if (m_brandList->count() == 0) {
        prompter().info(u"No Brand is Define."_s);
        close();
    }
}

void FrmPrescription::fillLists() {
    const auto fill = [this](const QString& list, const QString& sql, const QVariantList& params = {}) {
        FillRows(db(), *qobject_cast<ListControl*>(control(list)), sql, params);
    };
    FillRowsKept(db(), *qobject_cast<ListControl*>(control(u"Cmb_Patient"_s)), PatientListSql,
                 {u"Patient"_s});
    fill(u"Cmb_RefBy"_s, u"SELECT RefBy FROM RefBy WHERE PrescriberCode = ? ORDER BY RefBy"_s,
         {state().ClinicPrescriberCode});
    const auto keep = [this](const QString& list, const QString& sql, const QStringList& tables) {
        FillRowsKept(db(), *qobject_cast<ListControl*>(control(list)), sql, tables);
    };
    keep(u"CmbPharma"_s, u"SELECT Code, Name FROM PharmaName ORDER BY Name"_s, {u"PharmaName"_s});
    fill(u"CmbIndication"_s, u"SELECT Code, Name FROM Indication ORDER BY Name"_s);
    fill(u"CmbGroup"_s, u"SELECT Code, Name FROM GroupName ORDER BY Name"_s);
    fill(u"CmbCompany"_s, u"SELECT Code, Name FROM Manufacturer ORDER BY Name"_s);
    fill(u"SymbolDD"_s, u"SELECT Code, Name FROM Symbols ORDER BY Name"_s);
    fill(u"ComplaintDD"_s, u"SELECT Code, Name FROM Complaints ORDER BY Name"_s);
    keep(u"DiseasesDD"_s,
         u"SELECT Code, Name, Familial, Congenital, Communicable, LifeStyle, Genetic, TypeNotes, DiseaseSex, "
         "DiseaseCategory, Notes FROM Disease ORDER BY Name"_s,
         {u"Disease"_s});
    fill(u"ProcedureDD"_s, u"SELECT Code, Name FROM Surgery ORDER BY Name"_s);
    m_history->fillLists();
    fill(u"DsgRemarkDD"_s, u"SELECT Code, Name FROM DsgRemark ORDER BY Name"_s);
    m_filters = {};
    BuildBrandList();
}

// ---------------------------------------------------------------------------------------------------------
// Showing a prescription.

void FrmPrescription::clearScreen() {
    m_diseasesChanged = false;
    for (Control* c : controls()) {
        if (auto* box = qobject_cast<TextBox*>(c))
            box->setText({});
        else if (auto* combo = qobject_cast<ComboBox*>(c); combo && !IsBrandFilter(c->name()))
            combo->setText({});
        else if (auto* date = qobject_cast<DateBox*>(c))
            date->setDate({});
        else if (auto* tick = qobject_cast<CheckBox*>(c))
            tick->setValue(false);
    }
    ClearPatientContext();
    qobject_cast<ListBox*>(control(u"LstInvestigation"_s))->clear();
    m_panel->clear();
    state().CurrentBrandCode = 0;
    state().CurrentDsgFmCode = 0;
}

void FrmPrescription::showEmpty() {
    PresMode = 0;
    clearScreen();
    state().CurrentPresCode = 0;
    state().CurrentPatientCode = 0;
    LoadStagingFromPrescription(db(), 0, true);
    LoadPatientHistoryToStaging(db(), 0, u"P"_s);
    for (Control* c : controls()) {
        if (auto* grid = qobject_cast<Grid*>(c))
            grid->reload();
    }
    applyMask(u"CmdCtlButton"_s, NoRecords);
    lockFields();
    setFocus(*control(u"CmdCtlButton"_s, CtlButton::New));
}

bool FrmPrescription::goTo(qint64 code) {
    const auto row = db().first(u"SELECT * FROM PresHead WHERE Code = ?"_s, {code});
    if (!row)
        return false;
    m_shown = code;
    m_row = *row;
    ShowCurrentPrescription();
    return true;
}

void FrmPrescription::ShowCurrentPrescription() {
    const Row& row = m_row;
    clearScreen();
    const qint64 code = row.integer(u"Code"_s);
    state().CurrentPresCode = code;
    qobject_cast<TextBox*>(control(u"TxtNo"_s))->setText(QString::number(code));
    qobject_cast<DateBox*>(control(u"PresDate"_s))->setDate(row.date(u"PresDate"_s));
    for (const auto& [box, column] :
         {std::pair{u"Cmb_OPDNo"_s, u"OPDCardNo"_s}, std::pair{u"Cmb_VisitNo"_s, u"VisitNo"_s}}) {
        const QString text = row.text(column).trimmed();
        qobject_cast<ComboBox*>(control(box))->setText(text == u"0"_s ? QString() : text);
    }
    qobject_cast<TextBox*>(control(u"TxtAmount"_s))->setText(NumberText(row.real(u"Amount"_s)));
    const QString pay = row.text(u"PayMode"_s);
    qobject_cast<OptionButton*>(control(u"OptCash"_s))->setValue(pay == u"C"_s);
    qobject_cast<OptionButton*>(control(u"OptCheque"_s))->setValue(pay == u"B"_s);
    qobject_cast<OptionButton*>(control(u"OptCredit"_s))->setValue(pay == u"D"_s);
    qobject_cast<TextBox*>(control(u"Txt_ChequeNo"_s))->setText(row.text(u"ChequeNo"_s));
    qobject_cast<DateBox*>(control(u"SsDateCheckUp"_s))->setDate(row.date(u"ChkDate"_s));
    qobject_cast<TextBox*>(control(u"TxtNVRemark"_s))->setText(row.text(u"NVRemark"_s));
    qobject_cast<ComboBox*>(control(u"Cmb_RefBy"_s))->setText(row.text(u"RefBy"_s));

    LoadStagingFromPrescription(db(), code, true);
    LoadPatientHistoryToStaging(db(), code, u"D"_s);

    // The patient as the prescription recorded it: its own vitals, states and pregnancy block.
    const qint64 patient = row.integer(u"PatientCode"_s);
    const auto patientRow = db().first(u"SELECT * FROM Patient WHERE Code = ?"_s, {patient});
    if (!patientRow) {
        prompter().info(u"Invalid Patient Information."_s);
        state().CurrentPatientCode = 0;
    } else {
        FillPatientContext(patientRow, row.date(u"PresDate"_s));
    }
    const QStringList vitals{u"Height"_s, u"Weight"_s, u"Temp"_s, u"Pulse"_s, u"BPS"_s, u"BPD"_s};
    const QStringList boxes{u"TxtHt"_s, u"TxtWt"_s, u"TxtTemp"_s, u"TxtPulse"_s, u"TxtBPS"_s, u"TxtBPD"_s};
    for (int i = 0; i < vitals.size(); ++i)
        qobject_cast<TextBox*>(control(boxes.at(i)))->setText(MeasureText(row.real(vitals.at(i))));
    for (int field = 1; field <= 7; ++field)
        states.at(field) = row.flag(QString::fromUtf16(StateColumns[field]));
    showStates();
    qobject_cast<DateBox*>(control(u"SSDateLMP"_s))->setDate(row.date(u"LMPDate"_s));
    qobject_cast<DateBox*>(control(u"SsDateEDD"_s))->setDate(row.date(u"EDDate"_s));
    for (const auto& [box, column] :
         {std::pair{u"TxtPregStatus"_s, u"PregStatus"_s}, std::pair{u"TxtLD"_s, u"LastDel"_s},
          std::pair{u"TxtParity"_s, u"Parity"_s}, std::pair{u"TxtAbortion"_s, u"Abortions"_s},
          std::pair{u"TxtObesity"_s, u"Obesity"_s}, std::pair{u"TxtExamination"_s, u"Examination"_s},
          std::pair{u"TxtNotes"_s, u"Remark"_s}})
        qobject_cast<TextBox*>(control(box))->setText(row.text(column));

    showAdvised(code);

    for (Control* c : controls()) {
        if (auto* grid = qobject_cast<Grid*>(c))
            grid->reload();
    }
    brandRowChanged();
    lockFields();
}

// The investigations a prescription advised.
void FrmPrescription::showAdvised(qint64 prescription) {
    FillRows(db(), *qobject_cast<ListBox*>(control(u"LstInvestigation"_s)),
             u"SELECT A.Code, A.Name FROM Investigation A, PresAdvised B "
             "WHERE A.Code = B.InvestigationCode AND B.PrescriptionCode = ? ORDER BY A.Name"_s,
             {prescription});
}

void FrmPrescription::setMode(int mode) {
    PresMode = mode;
    applyMask(u"CmdCtlButton"_s, mode == 0 ? Browsing : Editing);
    lockFields();
}

// Everything is read-only in view mode, apart from the number, which finds a prescription.
void FrmPrescription::lockFields() {
    const bool editing = PresMode > 0;
    const bool isNew = PresMode == 1;
    static const QStringList newOnly{u"PresDate"_s, u"Cmb_OPDNo"_s, u"Cmb_VisitNo"_s, u"CmdPres"_s,
                                     u"Cmb_Patient"_s};
    static const QStringList always{
        u"CmdCtlButton"_s, u"SsTabMain"_s, u"SsTabPatient"_s, u"SsTabComplaint"_s, u"SsTabSearch"_s,
        u"CmdBrand"_s,     u"LblDrug"_s,   u"LblBrand"_s,     u"CmdNextDrug"_s,    u"CmdPrevDrug"_s};
    for (Control* c : controls()) {
        const QString& name = c->name();
        if (always.contains(name) || c->kind() == ControlKind::Label)
            continue;
        bool on = editing;
        if (name == u"TxtNo"_s)
            on = !editing;
        else if (newOnly.contains(name))
            on = isNew;
        else if (name == u"Txt_ChequeNo"_s)
            on = editing && qobject_cast<OptionButton*>(control(u"OptCheque"_s))->value();
        else if (name == u"TxtFather"_s || name == u"TxtSex"_s || name == u"TxtDOB"_s ||
                 name == u"TxtAge"_s || name == u"TxtBlood"_s)
            continue;
        if (name == u"SSDateLMP"_s || name == u"SsDateEDD"_s || name == u"TxtPregStatus"_s ||
            name == u"TxtLD"_s || name == u"TxtParity"_s || name == u"TxtAbortion"_s)
            on = editing && states.at(1);
        if (auto* box = qobject_cast<TextBox*>(c))
            box->setLocked(!on);
        else if (auto* grid = qobject_cast<Grid*>(c)) {
            static const QStringList editable{u"GrdBrand"_s, u"GrdComplaint"_s, u"GrdDiseases"_s,
                                              u"GrdProcedure"_s};
            if (editable.contains(name))
                grid->setLocked(!editing);
        } else if (c->kind() == ControlKind::Button && name == u"CmdPatient"_s)
            // A new prescription may change its patient; the others work on the patient shown.
            c->setEnabled(c->index() == 0 || c->index() == 2 ? isNew : state().CurrentPatientCode > 0);
        else
            c->setEnabled(on);
    }
    m_history->setEditable(editing);
    const bool female = qobject_cast<TextBox*>(control(u"TxtSex"_s))->text().toUpper() == u"FEMALE"_s;
    for (int i : {Pregnancy, Lactation})
        control(u"ChkSafety"_s, i)->setEnabled(editing && female);
}

// ---------------------------------------------------------------------------------------------------------
// Navigation.

void FrmPrescription::Top() {
    goTo(db().scalar(u"SELECT MIN(Code) FROM PresHead"_s).toLongLong());
    prompter().info(u"First Prescription."_s);
    setFocus(*control(u"CmdCtlButton"_s, CtlButton::Next));
}

void FrmPrescription::Back() {
    const QVariant previous = db().scalar(u"SELECT MAX(Code) FROM PresHead WHERE Code < ?"_s, {m_shown});
    if (previous.isNull()) {
        prompter().info(u"First Prescription."_s);
        setFocus(*control(u"CmdCtlButton"_s, CtlButton::Next));
        return;
    }
    goTo(previous.toLongLong());
}

void FrmPrescription::Next() {
    const QVariant next = db().scalar(u"SELECT MIN(Code) FROM PresHead WHERE Code > ?"_s, {m_shown});
    if (next.isNull()) {
        prompter().info(u"Last Prescription."_s);
        setFocus(*control(u"CmdCtlButton"_s, CtlButton::Back));
        return;
    }
    goTo(next.toLongLong());
}

void FrmPrescription::Last() {
    goTo(db().scalar(u"SELECT MAX(Code) FROM PresHead"_s).toLongLong());
    prompter().info(u"Last Prescription."_s);
    setFocus(*control(u"CmdCtlButton"_s, CtlButton::Back));
}

bool FrmPrescription::goToNumber() {
    if (PresMode != 0)
        return true;
    auto& box = *qobject_cast<TextBox*>(control(u"TxtNo"_s));
    const qint64 wanted = box.text().trimmed().toLongLong();
    if (wanted == m_shown && m_shown > 0)
        return true;
    if (wanted <= 0 || !goTo(wanted)) {
        prompter().stop(u"Invalid Prescription No."_s);
        box.setText(m_shown > 0 ? QString::number(m_shown) : QString());
    }
    return true;
}

void FrmPrescription::Find() {
    if (!ScreenRegistry::instance().has(u"Find_Prescription"_s))
        return notAvailable();
    state().SelectedCode = 0;
    process().openModal(u"Find_Prescription"_s);
    const qint64 code = state().SelectedCode;
    if (code > 0 && code != m_shown)
        goTo(code);
    else if (code == 0)
        state().CurrentPresCode = m_shown;
}

// ---------------------------------------------------------------------------------------------------------
// New, Edit, Cancel.

void FrmPrescription::New() {
    PresMode = 1;
    clearScreen();
    ClearPhysicalObservations(state());
    qint64 number = db().scalar(u"SELECT IFNULL(MAX(Code), 0) + 1 FROM PresHead"_s).toLongLong();
    const qint64 lastNo = state().Params.integer(u"LastNo"_s);
    if (number == 1 && lastNo > 0)
        number = lastNo;
    state().CurrentPresCode = number;
    state().CurrentPatientCode = 0;
    m_patientOffered = 0;
    LoadStagingFromPrescription(db(), number, true);
    LoadPatientHistoryToStaging(db(), 0, u"P"_s);
    for (Control* c : controls()) {
        if (auto* grid = qobject_cast<Grid*>(c))
            grid->reload();
    }
    qobject_cast<TextBox*>(control(u"TxtNo"_s))->setText(QString::number(number));
    const QDate today = state().clock.today();
    qobject_cast<DateBox*>(control(u"PresDate"_s))->setDate(today);
    const qint64 days = state().Params.integer(u"CheckUpDays"_s);
    qobject_cast<DateBox*>(control(u"SsDateCheckUp"_s))->setDate(days < 1 ? QDate() : today.addDays(days));
    qobject_cast<TextBox*>(control(u"TxtAmount"_s))
        ->setText(NumberText(state().Params.number(u"DefaultFee"_s)));
    qobject_cast<OptionButton*>(control(u"OptCash"_s))->setValue(true);
    setMode(1);
    setFocus(u"Cmb_OPDNo"_s);
}

void FrmPrescription::Edit() {
    if (!state().Params.flag(u"AllowUpdPad"_s)) {
        prompter().info(u"Prescription(s) Updation is Not Allowed."_s);
        return;
    }
    setMode(2);
    setFocus(u"TxtHt"_s);
}

void FrmPrescription::Cancel() {
    PresMode = 0;
    const BrandFilters kept = m_filters;
    if (goTo(m_shown) || goTo(db().scalar(u"SELECT MAX(Code) FROM PresHead"_s).toLongLong())) {
        setMode(0);
    } else {
        showEmpty();
    }
    m_filters = kept;
    setFocus(*control(u"CmdCtlButton"_s, CtlButton::New));
}

// ---------------------------------------------------------------------------------------------------------
// Save.

void FrmPrescription::Save() {
    if (!m_brands->leave())
        return;
    auto& patient = *qobject_cast<ComboBox*>(control(u"Cmb_Patient"_s));
    if (patient.text().trimmed().isEmpty() || state().CurrentPatientCode < 1) {
        prompter().stop(u"Patient's Name Should Not be Left Blank"_s);
        setFocus(patient);
        return;
    }
    if (state().CurrentPresCode < 1) {
        prompter().stop(u"Invalid Prescription Informations. Cannot Save Details."_s);
        setFocus(*control(u"CmdCtlButton"_s, CtlButton::Cancel));
        return;
    }
    const bool isNew = PresMode == 1;
    const QString card = qobject_cast<ComboBox*>(control(u"Cmb_OPDNo"_s))->text().trimmed();
    const QString visit = qobject_cast<ComboBox*>(control(u"Cmb_VisitNo"_s))->text().trimmed();
    if (isNew && !visit.isEmpty() && card.isEmpty()) {
        prompter().stop(u"OPD Card No. Should Not be Left Blank."_s);
        setFocus(u"Cmb_OPDNo"_s);
        return;
    }
    if (isNew && !card.isEmpty() && visit.isEmpty()) {
        prompter().stop(u"Patient Visit No. Should Not be Left Blank."_s);
        setFocus(u"Cmb_VisitNo"_s);
        return;
    }
    const qint64 number = state().CurrentPresCode;
    if (!writePrescription(isNew)) {
        prompter().stop(u"Error While Saving Prescription. "_s + QString::number(db().lastErrorNumber()) +
                        u" - "_s + db().lastError());
        return;
    }

    // A ready-made copy is offered once the prescription is safe; its failure loses only the copy.
    QString readyMade;
    process().openModal(u"FrmSaveAsRM"_s, {}, [&readyMade](Screen& dialog) {
        readyMade = dialog.outputs.value(u"SaveReadyMade"_s).toString();
    });
    if (!readyMade.trimmed().isEmpty())
        SaveAsReadyMade(db(), number, readyMade.trimmed());

    goTo(number);
    prompter().info(u"Prescription "_s + (isNew ? u"Added."_s : u"Updated."_s));
    setMode(0);
}

bool FrmPrescription::writePrescription(bool isNew) {
    const qint64 number = state().CurrentPresCode;
    const qint64 patient = state().CurrentPatientCode;
    const QDate presDate = qobject_cast<DateBox*>(control(u"PresDate"_s))->date();
    const auto text = [this](const QString& name) { return qobject_cast<TextBox*>(control(name))->text(); };
    const auto date = [this](const QString& name) {
        return sqlDate(qobject_cast<DateBox*>(control(name))->date());
    };
    const QString card = qobject_cast<ComboBox*>(control(u"Cmb_OPDNo"_s))->text().trimmed();
    const QString visit = qobject_cast<ComboBox*>(control(u"Cmb_VisitNo"_s))->text().trimmed();
    const auto& physical = state().PhysicalList;

    Transaction tx(db());
    bool ok = tx.active();
    if (ok && !isNew) {
        ok = db().execute(u"DELETE FROM PresDet WHERE Code = ?"_s, {number}) >= 0;
        for (const char16_t* table : Children)
            ok = ok &&
                 db().execute(u"DELETE FROM %1 WHERE PrescriptionCode = ?"_s.arg(QString::fromUtf16(table)),
                              {number}) >= 0;
        // Observations of an examination no longer listed survive the edit.
        for (const PhysicalEntry& entry : physical)
            ok = ok &&
                 db().execute(u"DELETE FROM PresPhysical WHERE PrescriptionCode = ? AND PhysicalCode = ?"_s,
                              {number, entry.Code}) >= 0;
    }
    if (ok && isNew)
        ok = db().execute(u"INSERT INTO PresHead (Code, OPDCardNo, VisitNo, PresDate, PatientCode) "
                          "VALUES (?, ?, ?, ?, ?)"_s,
                          {number, card, visit, sqlDate(presDate), patient}) >= 0;
    if (ok) {
        const bool cash = qobject_cast<OptionButton*>(control(u"OptCash"_s))->value();
        const bool cheque = qobject_cast<OptionButton*>(control(u"OptCheque"_s))->value();
        const bool pregnant = states.at(1);
        ok = db().execute(u"UPDATE PresHead SET Height = ?, Weight = ?, Temp = ?, Pulse = ?, BPS = ?, BPD = "
                          u"?, Obesity = ?, "
                          "Paediatric = ?, Elderly = ?, Pregnancy = ?, Lactation = ?, Liver = ?, Renal = ?, "
                          "Pulmonary = ?, "
                          "LMPDate = ?, EDDate = ?, PregStatus = ?, LastDel = ?, Parity = ?, Abortions = ?, "
                          "Examination = ?, Remark = ?, Amount = ?, PayMode = ?, ChequeNo = ?, ChkDate = ?, "
                          "NVRemark = ?, "
                          "RefBy = ? WHERE Code = ?"_s,
                          {MeasureOf(text(u"TxtHt"_s)),
                           MeasureOf(text(u"TxtWt"_s)),
                           MeasureOf(text(u"TxtTemp"_s)),
                           MeasureOf(text(u"TxtPulse"_s)),
                           MeasureOf(text(u"TxtBPS"_s)),
                           MeasureOf(text(u"TxtBPD"_s)),
                           text(u"TxtObesity"_s).trimmed(),
                           states.at(3),
                           states.at(4),
                           states.at(1),
                           states.at(2),
                           states.at(6),
                           states.at(5),
                           states.at(7),
                           pregnant ? date(u"SSDateLMP"_s) : QVariant(),
                           pregnant ? date(u"SsDateEDD"_s) : QVariant(),
                           text(u"TxtPregStatus"_s).trimmed(),
                           text(u"TxtLD"_s).trimmed(),
                           text(u"TxtParity"_s).trimmed(),
                           text(u"TxtAbortion"_s).trimmed(),
                           text(u"TxtExamination"_s),
                           text(u"TxtNotes"_s),
                           MeasureOf(text(u"TxtAmount"_s)),
                           cash ? u"C"_s : (cheque ? u"B"_s : u"D"_s),
                           cheque ? text(u"Txt_ChequeNo"_s) : QString(),
                           date(u"SsDateCheckUp"_s),
                           text(u"TxtNVRemark"_s),
                           qobject_cast<ComboBox*>(control(u"Cmb_RefBy"_s))->text().trimmed(),
                           number}) >= 0;
    }
    for (const StagedList& list : Purges)
        ok = ok && RunWithCode(db(),
                               u"DELETE FROM %1 WHERE %2"_s.arg(QString::fromUtf16(list.staging),
                                                                QString::fromUtf16(list.incomplete)),
                               number) >= 0;
    for (const char16_t* copy : Copies)
        ok = ok && RunWithCode(db(), QString::fromUtf16(copy), number) >= 0;
    ok = ok && SaveHistoryFromStaging(db(), u"TmpPres"_s, u"Pres"_s, u"PrescriptionCode"_s, number);
    for (const ListRow& advised : qobject_cast<ListBox*>(control(u"LstInvestigation"_s))->rows())
        ok = ok &&
             db().execute(u"INSERT INTO PresAdvised (PrescriptionCode, InvestigationCode) VALUES (?, ?)"_s,
                          {number, advised.code}) >= 0;
    for (const PhysicalEntry& entry : physical)
        ok = ok && db().execute(u"INSERT INTO PresPhysical (PrescriptionCode, PhysicalCode, Observation) "
                                "VALUES (?, ?, ?)"_s,
                                {number, entry.Code, QString(u""_s + entry.Observation.trimmed())}) >= 0;
    if (ok && isNew) {
        // The visit is availed and the patient remembers the prescription, its height and weight.
        if (!visit.isEmpty() && !card.isEmpty())
            ok = db().execute(u"UPDATE Visits SET VisitStatus = 'D' WHERE VisitNo = ?"_s, {visit}) >= 0;
        ok = ok && db().execute(u"UPDATE Patient SET Last_Date = ?, Last_No = ?, PHeight = ?, PWeight = ? "
                                "WHERE Code = ?"_s,
                                {sqlDate(presDate), number, MeasureOf(text(u"TxtHt"_s)),
                                 MeasureOf(text(u"TxtWt"_s)), patient}) >= 0;
    }
    // The dosage of each line marked to be remembered becomes the default of its brand and form.
    ok =
        ok && db().execute(u"UPDATE GenericDsgFm SET Remark = (SELECT B.Dosage FROM TmpDet B "
                           "WHERE B.Code = GenericDsgFm.GenericCode AND B.DsgFmCode = GenericDsgFm.DsgFmCode "
                           "AND B.\"Update\" ORDER BY B.rowid DESC LIMIT 1) "
                           "WHERE rowid IN (SELECT A.rowid FROM TmpDet B, GenericDsgFm A WHERE B.\"Update\" "
                           "AND A.GenericCode = B.Code AND A.DsgFmCode = B.DsgFmCode)"_s) >= 0;
    return ok && tx.commit();
}

// ---------------------------------------------------------------------------------------------------------
// Delete.

void FrmPrescription::Delete() {
    if (!state().Params.flag(u"AllowDelPad"_s)) {
        prompter().info(u"Prescription(s) Deletion is Not Allowed."_s);
        return;
    }
    if (!prompter().ask(u"Delete Current Prescription ?"_s))
        return;
    if (!CheckPrescriptionInUse())
        return;
    const qint64 number = m_shown;
    bool ok = false;
    {
        Transaction tx(db());
        ok = tx.active() && db().execute(u"DELETE FROM PresDet WHERE Code = ?"_s, {number}) >= 0;
        for (const char16_t* table : Children)
            ok = ok &&
                 db().execute(u"DELETE FROM %1 WHERE PrescriptionCode = ?"_s.arg(QString::fromUtf16(table)),
                              {number}) >= 0;
        ok = ok && db().execute(u"DELETE FROM PresPhysical WHERE PrescriptionCode = ?"_s, {number}) >= 0;
        ok = ok && db().execute(u"DELETE FROM PresHead WHERE Code = ?"_s, {number}) >= 0;
        ok = ok && tx.commit();
    }
    if (!ok) {
        prompter().stop(u"Error while Deleting the Selected Prescription. "_s +
                        QString::number(db().lastErrorNumber()) + u" - "_s + db().lastError());
        return;
    }
    const QVariant last = db().scalar(u"SELECT MAX(Code) FROM PresHead"_s);
    if (!last.isNull()) {
        goTo(last.toLongLong());
        setMode(0);
    } else {
        m_shown = 0;
        showEmpty();
    }
}

// Only the latest prescription of a patient can go, and only while nothing was printed or received on it.
bool FrmPrescription::CheckPrescriptionInUse() {
    if (db().exists(u"SELECT Code FROM PresHead WHERE PresDate > ? AND PatientCode = ?"_s,
                    {sqlDate(m_row.date(u"PresDate"_s)), m_row.integer(u"PatientCode"_s)})) {
        prompter().stop(u"SubSequent Prescription(s) Found. Cannot "_s + u"Delete."_s);
        return false;
    }
    if (db().exists(u"SELECT PrescriptionCode FROM PrintDoc WHERE PrescriptionCode = ? "
                    "UNION SELECT PrescriptionCode FROM PrintInv WHERE PrescriptionCode = ? "
                    "UNION SELECT PrescriptionCode FROM Receipt WHERE PrescriptionCode = ?"_s,
                    {m_shown, m_shown, m_shown})) {
        prompter().stop(u"Prescription is in Use [In Documentation / Payment Receipt]. Cannot "_s +
                        u"Delete."_s);
        return false;
    }
    return true;
}

// ---------------------------------------------------------------------------------------------------------
// Dates.

bool FrmPrescription::presDateLeave() {
    if (PresMode != 1)
        return true;
    const QDate date = qobject_cast<DateBox*>(control(u"PresDate"_s))->date();
    if (!date.isValid()) {
        prompter().stop(u"Not a Valid Date."_s);
        return false;
    }
    if (date > state().clock.today()) {
        prompter().stop(u"Prescription Date Should Not Exceed Current Date."_s);
        return false;
    }
    const qint64 days = state().Params.integer(u"CheckUpDays"_s);
    auto& checkUp = *qobject_cast<DateBox*>(control(u"SsDateCheckUp"_s));
    if (days >= 1 && checkUp.date() != date.addDays(days))
        checkUp.setDate(date.addDays(days));
    return true;
}

bool FrmPrescription::checkUpLeave() {
    if (PresMode == 0)
        return true;
    const QDate checkUp = qobject_cast<DateBox*>(control(u"SsDateCheckUp"_s))->date();
    if (checkUp.isValid() && checkUp < qobject_cast<DateBox*>(control(u"PresDate"_s))->date()) {
        prompter().stop(u"Next Check-Up Date Should Not be Less than Prescription Date."_s);
        return false;
    }
    return true;
}

// ---------------------------------------------------------------------------------------------------------
// The patient.

// The pregnancy an old prescription recorded: not when its delivery date has passed, unless the doctor
// goes on, and not over a paediatric patient without the doctor's word.
void FrmPrescription::takePregnancy(const Row& head) {
    const QDate presDate = qobject_cast<DateBox*>(control(u"PresDate"_s))->date();
    const QDate edd = head.date(u"EDDate"_s);
    if (edd.isValid() && edd < presDate &&
        !prompter().ask(u"Expected Delivery Date has been Expired. Want to Continue ?"_s))
        return;
    if (states.at(3) && !prompter().ask(u"Patient is Under Paediatric Category. Sure About Pregnancy ?"_s))
        return;
    states.at(1) = true;
    states.at(2) = states.at(3) = false;
    const QDate lmp = head.date(u"LMPDate"_s);
    qobject_cast<DateBox*>(control(u"SSDateLMP"_s))->setDate(lmp);
    qobject_cast<DateBox*>(control(u"SsDateEDD"_s))->setDate(edd);
    qobject_cast<TextBox*>(control(u"TxtPregStatus"_s))
        ->setText(prompter().ask(u"Re-Calculate Pregnancy Status ?"_s) ? PregnancyStatusText(lmp, presDate)
                                                                       : head.text(u"PregStatus"_s));
    for (const auto& [box, column] :
         {std::pair{u"TxtLD"_s, u"LastDel"_s}, std::pair{u"TxtParity"_s, u"Parity"_s},
          std::pair{u"TxtAbortion"_s, u"Abortions"_s}})
        qobject_cast<TextBox*>(control(box))->setText(head.text(column));
}

// The last period gives the expected delivery, nine months and a week later, and the pregnancy's status.
bool FrmPrescription::lmpLeave() {
    if (PresMode == 0)
        return true;
    const QDate lmp = qobject_cast<DateBox*>(control(u"SSDateLMP"_s))->date();
    const QDate presDate = qobject_cast<DateBox*>(control(u"PresDate"_s))->date();
    auto& edd = *qobject_cast<DateBox*>(control(u"SsDateEDD"_s));
    auto& status = *qobject_cast<TextBox*>(control(u"TxtPregStatus"_s));
    edd.setDate({});
    status.setText({});
    if (!lmp.isValid())
        return true;
    if (lmp > presDate) {
        prompter().stop(u"Invalid Last Period Date. LMP Date Should Not Exceed Prescription Date."_s);
        return true;
    }
    const QDate expected = lmp.addMonths(9).addDays(7);
    if (expected < presDate &&
        !prompter().ask(u"Expected Delivery Date has been Expired. Want to Continue ?"_s))
        return true;
    edd.setDate(expected);
    status.setText(PregnancyStatusText(lmp, presDate));
    return true;
}

void FrmPrescription::ClearPatientContext() {
    m_age = {};
    for (const QString& name :
         {u"TxtFather"_s, u"TxtSex"_s, u"TxtDOB"_s, u"TxtAge"_s, u"TxtBlood"_s, u"TxtHt"_s, u"TxtWt"_s,
          u"TxtTemp"_s, u"TxtPulse"_s, u"TxtBPS"_s, u"TxtBPD"_s, u"TxtObesity"_s, u"TxtPregStatus"_s,
          u"TxtLD"_s, u"TxtParity"_s, u"TxtAbortion"_s})
        qobject_cast<TextBox*>(control(name))->setText({});
    states.fill(false);
    showStates();
    qobject_cast<DateBox*>(control(u"SSDateLMP"_s))->setDate({});
    qobject_cast<DateBox*>(control(u"SsDateEDD"_s))->setDate({});
    control(u"LblObesity"_s)->setCaption(u"Obesity"_s);
    control(u"CmdPatient"_s, 6)->setCaption(u"Coronary R&isk Prediction"_s);
}

void FrmPrescription::FillPatientContext(const std::optional<Row>& patient, const QDate& onDate) {
    ClearPatientContext();
    if (!patient)
        return;
    state().CurrentPatientCode = patient->integer(u"Code"_s);
    auto& combo = *qobject_cast<ComboBox*>(control(u"Cmb_Patient"_s));
    combo.setCurrent(combo.findCode(state().CurrentPatientCode));
    combo.setText(patient->text(u"Name"_s));
    qobject_cast<TextBox*>(control(u"TxtFather"_s))->setText(patient->text(u"Father"_s));
    const QString sex = patient->text(u"Sex"_s).trimmed().toUpper() == u"M"_s ? u"Male"_s : u"Female"_s;
    qobject_cast<TextBox*>(control(u"TxtSex"_s))->setText(sex);
    const QDate birth = patient->date(u"BirthDate"_s);
    qobject_cast<TextBox*>(control(u"TxtDOB"_s))
        ->setText(birth.isValid() ? birth.toString(u"dd/MMM/yyyy"_s) : QString());
    qobject_cast<TextBox*>(control(u"TxtBlood"_s))
        ->setText((patient->text(u"Blood"_s) + u" "_s + patient->text(u"Rh"_s)).trimmed());
    const DateDiff age = DateDifference(onDate.isValid() ? onDate : state().clock.today(), birth);
    m_age = age;
    QStringList parts;
    if (age.years > 0)
        parts << QString::number(age.years) + u" Year(s)"_s;
    if (age.months > 0)
        parts << QString::number(age.months) + u" Month(s)"_s;
    if (age.days > 0)
        parts << QString::number(age.days) + u" Day(s)"_s;
    qobject_cast<TextBox*>(control(u"TxtAge"_s))->setText(parts.join(u", "_s));
    if (birth.isValid()) {
        states.at(3) = age.years <= state().Params.integer(u"AgePaediatric"_s);
        states.at(4) = age.years >= state().Params.integer(u"AgeElderly"_s);
    }
    const double height = patient->real(u"PHeight"_s);
    const double weight = patient->real(u"PWeight"_s);
    qobject_cast<TextBox*>(control(u"TxtHt"_s))->setText(MeasureText(height));
    qobject_cast<TextBox*>(control(u"TxtWt"_s))->setText(MeasureText(weight));
    control(u"LblObesity"_s)->setCaption(states.at(3) ? u"Growth"_s : u"Obesity"_s);
    control(u"CmdPatient"_s, 6)
        ->setCaption(states.at(3) ? u"Child &Growth Status"_s : u"Coronary R&isk Prediction"_s);
    qobject_cast<TextBox*>(control(u"TxtObesity"_s))
        ->setText(WeightAssessment(age.years, age.months, height, weight));
    showStates();
    lockFields();
}

void FrmPrescription::selectPatient(qint64 patient) {
    const auto row = db().first(u"SELECT * FROM Patient WHERE Code = ?"_s, {patient});
    if (!row) {
        state().CurrentPatientCode = 0;
        ClearPatientContext();
        LoadPatientHistoryToStaging(db(), 0, u"P"_s);
    } else {
        FillPatientContext(row, qobject_cast<DateBox*>(control(u"PresDate"_s))->date());
        LoadPatientHistoryToStaging(db(), patient, u"P"_s);
        LoadPhysicalObservations(state(), u"P"_s, patient);
    }
    m_history->reload();
}

bool FrmPrescription::patientLeave() {
    if (PresMode != 1)
        return true;
    auto& combo = *qobject_cast<ComboBox*>(control(u"Cmb_Patient"_s));
    const QString text = combo.text().trimmed();
    if (!text.isEmpty() && ChosenCode(combo) < 0) {
        prompter().stop(u"Invalid Patient Name."_s);
        return false;
    }
    const qint64 code = text.isEmpty() ? 0 : ChosenCode(combo);
    if (code != state().CurrentPatientCode)
        selectPatient(code);
    if (code > 0 && code != m_patientOffered) {
        m_patientOffered = code;
        OfferLastPrescription();
    }
    return true;
}

void FrmPrescription::patientButton(int index) {
    enum { NewPatient = 0, EditPatient, FindPatient, Information, History, Physical, Risk, SnapShots };
    if (index != NewPatient && state().CurrentPatientCode < 1) {
        prompter().info(u"Please Select the Patient First."_s);
        return;
    }
    const auto openIfBuilt = [this](const QString& screen, const std::function<void(Screen&)>& setup = {}) {
        if (!ScreenRegistry::instance().has(screen)) {
            notAvailable();
            return false;
        }
        process().openModal(screen, setup);
        return true;
    };
    switch (index) {
    case NewPatient:
    case EditPatient: {
        const bool existing = index == EditPatient;
        if (!existing)
            state().CurrentPatientCode = 0;
        const qint64 shown = state().CurrentPatientCode;
        if (!openIfBuilt(u"Mst_Patient"_s, [existing](Screen& master) {
                master.inputs.insert(u"CallerId"_s, 1);
                master.inputs.insert(u"EditExisting"_s, existing);
            })) {
            state().CurrentPatientCode = existing ? shown : 0;
            break;
        }
        if (existing)
            Set_EditPatient();
        else
            Set_Patient();
        break;
    }
    case FindPatient:
        if (openIfBuilt(u"Find_Patient"_s))
            Set_Patient();
        break;
    case Information:
        openIfBuilt(u"Patient_Information"_s);
        break;
    case History:
        openIfBuilt(u"FrmHistory"_s);
        break;
    case Physical:
        openIfBuilt(u"FrmPhysical"_s, [this](Screen& physical) {
            physical.inputs.insert(u"ExaminationSource"_s, u"D"_s);
            physical.inputs.insert(u"ReadOnly"_s, PresMode == 0);
        });
        break;
    case Risk:
        openIfBuilt(states.at(3) ? u"FrmGrowth"_s : u"FrmRisk"_s);
        break;
    default:
        openIfBuilt(u"FrmSnapCompare"_s);
        break;
    }
    if (PresMode > 0)
        setFocus(u"TxtHt"_s);
}

// A patient made or found for the prescription becomes its patient, and is offered its last prescription.
void FrmPrescription::Set_Patient() {
    const qint64 patient = state().CurrentPatientCode;
    FillRowsKept(db(), *qobject_cast<ListControl*>(control(u"Cmb_Patient"_s)), PatientListSql,
                 {u"Patient"_s});
    if (patient <= 0) {
        selectPatient(0);
        return;
    }
    if (!db().exists(u"SELECT 1 FROM Patient WHERE Code = ?"_s, {patient})) {
        prompter().stop(u"Invalid Patient Record. Critical Program Error."_s);
        selectPatient(0);
        setFocus(u"Cmb_Patient"_s);
        return;
    }
    selectPatient(patient);
    if (patient != m_patientOffered) {
        m_patientOffered = patient;
        OfferLastPrescription();
    }
}

// The patient shown was changed in the patient master: the screen shows it as it now stands.
void FrmPrescription::Set_EditPatient() {
    const qint64 patient = state().CurrentPatientCode;
    FillRowsKept(db(), *qobject_cast<ListControl*>(control(u"Cmb_Patient"_s)), PatientListSql,
                 {u"Patient"_s});
    const auto row = db().first(u"SELECT * FROM Patient WHERE Code = ?"_s, {patient});
    if (!row) {
        prompter().stop(u"Invalid Patient Record. Critical Program Error."_s);
        selectPatient(0);
        return;
    }
    const std::array<bool, 8> kept = states;
    FillPatientContext(row, qobject_cast<DateBox*>(control(u"PresDate"_s))->date());
    // The states the doctor set by hand stay; the age decides paediatric and elderly again.
    for (int field : {1, 2, 5, 6, 7})
        states.at(field) = kept.at(field);
    showStates();
    lockFields();
}

// The patient's last prescription may fill the new one; its history lists always carry over.
void FrmPrescription::OfferLastPrescription() {
    const qint64 patient = state().CurrentPatientCode;
    const auto last = db().first(u"SELECT Code, PresDate FROM PresHead WHERE PatientCode = ? "
                                 "ORDER BY PresDate DESC, Code DESC LIMIT 1"_s,
                                 {patient});
    if (!last) {
        LoadPatientHistoryToStaging(db(), patient, u"P"_s);
        LoadPhysicalObservations(state(), u"P"_s, patient);
        m_history->reload();
        return;
    }
    const qint64 code = last->integer(u"Code"_s);
    const QString name = qobject_cast<ComboBox*>(control(u"Cmb_Patient"_s))->text().trimmed();
    if (prompter().ask(
            u"Want to Retrieve the Prescription Details From the Last Prescription of "_s + name +
            u" ?\n\nPrescription No : "_s + QString::number(code) + u"  -  Dated : "_s +
            QLocale(QLocale::English).toString(last->date(u"PresDate"_s), u"dd - MMMM - yyyy"_s))) {
        DownloadPrescription(code, false, true);
        LoadPhysicalObservations(state(), u"D"_s, code);
    } else if (
        prompter().ask(
            u"Want to Retrieve the General Physical Examination(s) Observed in Last Prescription ?"_s)) {
        LoadPhysicalObservations(state(), u"D"_s, code);
    } else {
        LoadPhysicalObservations(state(), u"P"_s, patient);
    }
    LoadPatientHistoryToStaging(db(), code, u"D"_s);
    m_history->reload();
}

// Fills the new prescription from an old one: its lines and lists, its texts and fee, and, when the
// doctor wants them, the patient's states it recorded.
void FrmPrescription::DownloadPrescription(qint64 source, bool confirm, bool safety) {
    if (confirm && !prompter().ask(u"Sure about Downloading Prescription Information ?"_s))
        return;
    LoadStagingFromPrescription(db(), source, false);
    for (const QString& grid : {u"GrdBrand"_s, u"GrdComplaint"_s, u"GrdDiseases"_s, u"GrdProcedure"_s})
        qobject_cast<Grid*>(control(grid))->reload();
    brandRowChanged();
    const auto head = db().first(u"SELECT * FROM PresHead WHERE Code = ?"_s, {source});
    qobject_cast<TextBox*>(control(u"TxtAmount"_s))
        ->setText(NumberText(head ? head->real(u"Amount"_s) : state().Params.number(u"DefaultFee"_s)));
    for (const auto& [box, column] :
         {std::pair{u"TxtNVRemark"_s, u"NVRemark"_s}, std::pair{u"TxtExamination"_s, u"Examination"_s},
          std::pair{u"TxtNotes"_s, u"Remark"_s}})
        qobject_cast<TextBox*>(control(box))->setText(head ? head->text(column) : QString());
    if (head && safety &&
        prompter().ask(
            u"Want to Retrieve the Safety Check(s) Details [ Except Paediatric ] From the Selected Prescription ?"_s))
        takeStates(*head);
    showAdvised(source);
}

// The states an old prescription recorded, except Paediatric; pregnancy and lactation only when the
// doctor overwrites what the screen shows.
void FrmPrescription::takeStates(const Row& head) {
    const bool pregnant = head.flag(u"Pregnancy"_s);
    const bool lactating = head.flag(u"Lactation"_s);
    if (pregnant && lactating) {
        prompter().stop(u"Unable to Retrieve Safety Check(s) Details.\n\nEither Pregnancy Or Lactation Found "
                        "Checked in the Selected Prescription."_s);
        return;
    }
    const bool female = qobject_cast<TextBox*>(control(u"TxtSex"_s))->text().toUpper() == u"FEMALE"_s;
    const auto overwrite = [this](int field, bool retrieved, const QString& word, const QString& being,
                                  const QString& notBeing) {
        if (states.at(field) == retrieved)
            return false;
        const QString now =
            states.at(field) ? u"Checked ["_s + being + u"]"_s : u"Un-Checked ["_s + notBeing + u"]"_s;
        const QString then = retrieved ? word + u" [Checked]"_s : u"No "_s + word + u" [Un-Checked]"_s;
        return prompter().ask(word + u" Check Found "_s + now + u". In Retrieved Details "_s + then +
                              u".\n\nWant to Overwrite the Current Status ?"_s);
    };
    if (female &&
        overwrite(1, pregnant, u"Pregnancy"_s, u"Patient is Pregnant"_s, u"Patient is Not Pregnant"_s)) {
        if (!pregnant)
            states.at(1) = false;
        else
            takePregnancy(head);
    }
    if (female &&
        overwrite(2, lactating, u"Lactation"_s, u"Patient is Lactating"_s, u"Patient is Not Lactating"_s)) {
        states.at(2) = lactating;
        if (lactating)
            states.at(1) = states.at(3) = false;
    }
    states.at(6) = head.flag(u"Liver"_s);
    states.at(5) = head.flag(u"Renal"_s);
    states.at(7) = head.flag(u"Pulmonary"_s);
    showStates();
    lockFields();
}

void FrmPrescription::showStates() {
    for (int i = 0; i < 6; ++i)
        qobject_cast<CheckBox*>(control(u"ChkSafety"_s, i))->setValue(states.at(Toggles[i].field));
}

// The toggles: paediatric, pregnancy and lactation exclude one another.
void FrmPrescription::toggleState(int index) {
    auto& toggle = *qobject_cast<CheckBox*>(control(u"ChkSafety"_s, index));
    if (PresMode == 0) {
        showStates();
        return;
    }
    const bool on = toggle.value();
    if (on && (index == Pregnancy || index == Lactation) && states.at(3) &&
        !prompter().ask(u"Patient is Under Paediatric Category. Sure About "_s +
                        (index == Pregnancy ? u"Pregnancy"_s : u"Lactation"_s) + u" ?"_s)) {
        toggle.setValue(false);
        return;
    }
    states.at(Toggles[index].field) = on;
    if (on && index == Paediatric) {
        states.at(1) = states.at(2) = states.at(4) = false;
    } else if (on && index == Pregnancy) {
        states.at(3) = states.at(2) = false;
    } else if (on && index == Lactation) {
        states.at(3) = states.at(1) = false;
    }
    if (!states.at(1)) {
        qobject_cast<DateBox*>(control(u"SSDateLMP"_s))->setDate({});
        qobject_cast<DateBox*>(control(u"SsDateEDD"_s))->setDate({});
        for (const QString& name : {u"TxtPregStatus"_s, u"TxtLD"_s, u"TxtParity"_s, u"TxtAbortion"_s})
            qobject_cast<TextBox*>(control(name))->setText({});
    }
    showStates();
    lockFields();
}

VANTREL_SCREEN(FrmPrescription);

} // namespace vantrel
