#include "core/ParameterScreen.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "core/Startup.h"

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

using Kind = ParameterScreen::Kind;
using Field = ParameterScreen::Field;

const QString kCities = u"SELECT Code, Name FROM City ORDER BY Name, Code"_s;

std::vector<Field> ClinicFields() {
    // In the order Enter walks them, tab by tab.
    return {
        // The reminder titles stand with the colours.
        {u"TxtRemDue"_s, u"RemTitleDue"_s, Kind::Text, 0, 0, u"Title For Due Vaccine Reminders"_s, {}},
        {u"TxtRemMissed"_s,
         u"RemTitleMissed"_s,
         Kind::Text,
         0,
         0,
         u"Title For Missed Vaccine Reminders"_s,
         {}},
        // Control parameters.
        {u"TxtControl(0)"_s, u"ImpMessageDays"_s, Kind::Number, 1, 3, u"Show Important Message Before"_s, {}},
        {u"TxtControl(1)"_s,
         u"AgePaediatric"_s,
         Kind::Number,
         1,
         3,
         u"Maximum Age for Paediatric Patients"_s,
         {}},
        {u"TxtControl(2)"_s, u"AgeElderly"_s, Kind::Number, 1, 3, u"Minimum Age for Elderly Patients"_s, {}},
        {u"TxtControl(3)"_s,
         u"CheckUpDays"_s,
         Kind::Number,
         1,
         3,
         u"Default Next Check Up Date is After"_s,
         {}},
        {u"TxtControl(4)"_s,
         u"DefaultFee"_s,
         Kind::Number,
         1,
         8,
         u"Default Prescription Charges (Fees)"_s,
         {}},
        {u"TxtControl(5)"_s, u"LastNo"_s, Kind::Number, 1, 8, u"First Prescription No."_s, {}},
        {u"Chk_SoundEffect"_s, u"SoundEffect"_s, Kind::Flag, 1, 0, u"Enable Sound Effects"_s, {}},
        {u"Chk_AutoBackup"_s, u"AutoBackup"_s, Kind::Flag, 1, 0, u"Enable Automatic Backup Procedure"_s, {}},
        {u"Chk_ShowPhysical"_s,
         u"ShowPhysical"_s,
         Kind::Flag,
         1,
         0,
         u"Print / Shows Only Visible Physical Examinations"_s,
         {}},
        {u"Chk_AllowDelPharma"_s, u"AllowDelPharma"_s, Kind::Flag, 1, 0, u"Allow Deletion of Drugs"_s, {}},
        {u"Chk_AllowUpdPharma"_s, u"AllowUpdPharma"_s, Kind::Flag, 1, 0, u"Allow Updation of Drugs"_s, {}},
        {u"Chk_AllowDelGeneric"_s, u"AllowDelGeneric"_s, Kind::Flag, 1, 0, u"Allow Deletion of Brands"_s, {}},
        {u"Chk_AllowUpdGeneric"_s, u"AllowUpdGeneric"_s, Kind::Flag, 1, 0, u"Allow Updation of Brands"_s, {}},
        {u"Chk_AllowDelPad"_s, u"AllowDelPad"_s, Kind::Flag, 1, 0, u"Allow Deletion of Prescriptions"_s, {}},
        {u"Chk_AllowUpdPad"_s, u"AllowUpdPad"_s, Kind::Flag, 1, 0, u"Allow Updation of Prescriptions"_s, {}},
        {u"Chk_PrintFooter"_s, u"PrintFooter"_s, Kind::Flag, 1, 0, u"Print Footer Details In Reports"_s, {}},
        {u"Chk_PrintHeader"_s, u"PrintHeader"_s, Kind::Flag, 1, 0, u"Print Header Details In Reports"_s, {}},
        {u"Chk_PrintAllAddress"_s,
         u"PrintAllAddress"_s,
         Kind::Flag,
         1,
         0,
         u"Print Both Clinic Details In Reports"_s,
         {}},
        {u"Chk_Residence"_s,
         u"ChkResidence"_s,
         Kind::Flag,
         1,
         0,
         u"Print Residence Address In Reports"_s,
         {}},
        {u"Chk_OffDay"_s, u"ChkOffDay"_s, Kind::Flag, 1, 0, u"Print Off Day In Reports"_s, {}},
        {u"Chk_PrintConclusion"_s,
         u"PrintConclusion"_s,
         Kind::Flag,
         1,
         0,
         u"Print Conclusion In Investigation Report"_s,
         {}},
        {u"Chk_Substitute"_s, u"ChkSubstitute"_s, Kind::Flag, 1, 0, u"Enable Substitute Check"_s, {}},
        {u"Chk_Interaction"_s, u"ChkInteraction"_s, Kind::Flag, 1, 0, u"Enable Drug Interaction Check"_s, {}},
        {u"Chk_Drug"_s, u"ChkDrug"_s, Kind::Flag, 1, 0, u"Enable Drug Duplication Check"_s, {}},
        {u"Chk_Safety"_s, u"ChkSafety"_s, Kind::Flag, 1, 0, u"Enable Brand / Drug Safety Checks"_s, {}},
        {u"Chk_AddInvAmt"_s,
         u"AddInvAmt"_s,
         Kind::Flag,
         1,
         0,
         u"Include Investigation Charges in Prescription Charges"_s,
         {}},
        {u"Chk_ExcludeContra"_s,
         u"ExcludeContra"_s,
         Kind::Flag,
         1,
         0,
         u"Shows Drugs Associated with Contra - Indi In Queries"_s,
         {}},
        {u"Chk_ExcludeIndi"_s,
         u"ExcludeIndi"_s,
         Kind::Flag,
         1,
         0,
         u"Shows Drugs Associated with Indications   In Queries"_s,
         {}},
        {u"Chk_ExcludeSide"_s,
         u"ExcludeSide"_s,
         Kind::Flag,
         1,
         0,
         u"Shows Drugs Associated with Side-Effects In Queries"_s,
         {}},
        {u"Chk_ExcludeSpecial"_s,
         u"ExcludeSpecial"_s,
         Kind::Flag,
         1,
         0,
         u"Shows Drugs Associated with Precautions  In Queries"_s,
         {}},
        {u"Txt_Footer"_s, u"Footer"_s, Kind::Text, 1, 0, u"Footer for Reports"_s, {}},
        {u"Txt_ReceiptFor"_s, u"ReceiptFor"_s, Kind::Text, 1, 0, u"Default Receipt Text"_s, {}},
        // The user and the clinic.
        {u"Txt_UsrName"_s, u"Clinic_User"_s, Kind::Shown, 2, 0, u"Principal Doctor"_s, {}},
        {u"Txt_ClinicName"_s, u"ClinicName"_s, Kind::Shown, 2, 0, u"Clinic / Hospital"_s, {}},
        {u"Txt_Regn"_s, u"Registration"_s, Kind::Text, 2, 0, u"Regn. No."_s, {}},
        {u"Txt_Spec"_s, u"Specialise"_s, Kind::Text, 2, 0, u"Specialise"_s, {}},
        {u"Txt_Quali"_s, u"Quali"_s, Kind::Text, 2, 0, u"Qualification"_s, {}},
        {u"TxtEmail"_s, u"Email"_s, Kind::Text, 2, 0, u"Email Id"_s, {}},
        {u"sscmbDepartment"_s, u"Department"_s, Kind::Combo, 2, 0, u"Department"_s,
         u"SELECT Code, Name FROM Department ORDER BY Name, Code"_s},
        {u"sscmbCompany"_s, u"CompanyCode"_s, Kind::Combo, 2, 0, u"Select the Default Company in Panel."_s,
         u"SELECT Code, CompanyName AS Name FROM Company ORDER BY CompanyName, Code"_s},
        {u"Txt_Address"_s, u"Address"_s, Kind::Text, 2, 0, u"Residence Address"_s, {}},
        {u"sscmbCity"_s, u"City"_s, Kind::Combo, 2, 0, u"City"_s, kCities},
        {u"Txt_Pin"_s, u"Pin"_s, Kind::Text, 2, 0, u"Pin"_s, {}},
        {u"Txt_Phones"_s, u"phones"_s, Kind::Text, 2, 0, u"Phones"_s, {}},
        {u"Txt_Mobile"_s, u"Mobile"_s, Kind::Text, 2, 0, u"Mobile"_s, {}},
        {u"Txt_Pager"_s, u"Pager"_s, Kind::Text, 2, 0, u"Pager"_s, {}},
        {u"Txt_Fax"_s, u"Fax"_s, Kind::Text, 2, 0, u"Fax"_s, {}},
        {u"Txt_Address1"_s, u"Address1"_s, Kind::Text, 2, 0, u"Clinic Address"_s, {}},
        {u"sscmbCity1"_s, u"City1"_s, Kind::Combo, 2, 0, u"City"_s, kCities},
        {u"Txt_Pin1"_s, u"Pin1"_s, Kind::Text, 2, 0, u"Pin"_s, {}},
        {u"Txt_Phones1"_s, u"phones1"_s, Kind::Text, 2, 0, u"Phones"_s, {}},
        {u"Txt_Timing1"_s, u"Timing1"_s, Kind::Text, 2, 0, u"Timing"_s, {}},
        {u"Txt_OffDay1"_s, u"OffDay1"_s, Kind::Text, 2, 0, u"Off Day"_s, {}},
        {u"Txt_Address2"_s, u"Address2"_s, Kind::Text, 2, 0, u"Clinic Address [Optional]"_s, {}},
        {u"sscmbCity2"_s, u"City2"_s, Kind::Combo, 2, 0, u"City"_s, kCities},
        {u"Txt_Pin2"_s, u"Pin2"_s, Kind::Text, 2, 0, u"Pin"_s, {}},
        {u"Txt_Phones2"_s, u"phones2"_s, Kind::Text, 2, 0, u"Phones"_s, {}},
        {u"Txt_Timing2"_s, u"Timing2"_s, Kind::Text, 2, 0, u"Timing"_s, {}},
        {u"Txt_OffDay2"_s, u"OffDay2"_s, Kind::Text, 2, 0, u"Off Day"_s, {}},
    };
}

std::vector<ParameterScreen::Colour> ClinicColours() {
    const QStringList first = {u"Find"_s, u"GridHelp"_s, u"Print"_s,    u"Master"_s, u"MstDet"_s,
                               u"Info"_s, u"Utility"_s,  u"Physical"_s, u"Vaccine"_s};
    const QStringList firstCaptions = {
        u"Find and Query"_s, u"Grid Help"_s,   u"Printing"_s,  u"Masters"_s,
        u"Master Details"_s, u"Information"_s, u"Utilities"_s, u"Physical Examination"_s,
        u"Immunization"_s};
    const QStringList second = {u"Database"_s,    u"Document"_s,   u"History"_s,      u"PadSnap"_s,
                                u"Appointment"_s, u"PadPatient"_s, u"PadComplaint"_s, u"PadDD"_s,
                                u"PadBrand"_s,    u"PadInv"_s};
    const QStringList secondCaptions = {
        u"Database Utilities"_s, u"Documents"_s,  u"History"_s,          u"Snapshots"_s, u"Appointments"_s,
        u"Patient Details"_s,    u"Complaints"_s, u"Brand Drop-Downs"_s, u"Brands"_s,    u"Investigations"_s};
    return ParameterScreen::Sections(first, firstCaptions, second, secondCaptions);
}

} // namespace

// The clinic's parameters in the main application: colours and passwords, control parameters, the user
// and the clinic.
class ControlForm : public ParameterScreen {
public:
    explicit ControlForm(Process& owner)
        : ParameterScreen(owner, u"ControlForm"_s, ClinicFields(), ClinicColours(), u"Scheduler"_s, 3) {
        tabs().tabs = {u"Colours and Passwords"_s, u"Control Parameters"_s, u"User and Clinic Details"_s};
        add<Label>(u"LblPhysicalNote"_s)
            .setCaption(
                u"List of Physical Examination will be updated After  Starting  the  New  Vantrel  Session."_s);
        for (int i : {1, 2}) {
            auto& age = box(u"TxtControl"_s, i);
            age.onValidate = [this, &age] {
                if (age.text().trimmed().toInt() != 0)
                    return true;
                prompter().stop(u"Age Limit Cannot be Left Blank Or Zero"_s);
                return false;
            };
        }
        box(u"Txt_Footer"_s).keyFilter = [](int key, const QString&, int) -> KeyResult {
            return {key == '\'' ? 0 : key, false};
        };
        // Enter puts no line break in the specialisation, it moves on as everywhere; Ctrl+Enter breaks the
        // line.
        auto& specialisation = box(u"Txt_Spec"_s);
        specialisation.setMultiLine(true);
        specialisation.keyFilter = [](int key, const QString&, int) -> KeyResult {
            return {key == '\'' ? 0 : key, false};
        };
        for (const QString& name : {u"Txt_Phones"_s, u"Txt_Mobile"_s, u"Txt_Pager"_s, u"Txt_Fax"_s,
                                    u"Txt_Phones1"_s, u"Txt_Phones2"_s}) {
            box(name).keyFilter = [](int key, const QString& text, int) -> KeyResult {
                return key == '.' ? KeyResult{0, true} : KeyTelephone(key, text, true);
            };
        }
        for (const QString& name : {u"TxtRemDue"_s, u"TxtRemMissed"_s})
            box(name).keyFilter = [](int key, const QString&, int) { return KeyUpperCase(key); };
        box(u"TxtEmail"_s).keyFilter = [](int key, const QString&, int) { return KeyLowerCase(key); };
        Exclusive(u"Chk_PrintAllAddress"_s, u"Chk_Residence"_s);
        Exclusive(u"Chk_Residence"_s, u"Chk_PrintAllAddress"_s);
    }

    void activate() override {
        const bool first = firstActivation();
        ParameterScreen::activate();
        if (!first || isClosed() || !firstRun())
            return;
        prompter().info(u"Please fill the required User and Clinic Informations.\n"
                        "Once you apply you won't be prompted again.\n"
                        "To Change the Control Parameters later you can select the\n"
                        "'Package Controls  ->  Control Parameters' Menu Option anytime."_s);
        setFocus(u"Txt_Regn"_s);
    }

protected:
    void writeMore(std::vector<std::pair<QString, QVariant>>& columns) override {
        columns.emplace_back(u"UserProfileUpdated"_s, 1);
    }

    bool afterWrite() override {
        return UpdateClinicPrescriber(db(), [this](const QString& parameter) { return Value(parameter); });
    }

private:
    TextBox& box(const QString& name, int index = -1) { return static_cast<TextBox&>(*control(name, index)); }

    // Ticking one box clears the other.
    void Exclusive(const QString& ticked, const QString& other) {
        auto& box = static_cast<CheckBox&>(*control(ticked));
        box.onClick = [this, &box, other] {
            if (box.value())
                static_cast<CheckBox&>(*control(other)).setValue(false);
        };
    }
};

VANTREL_SCREEN(ControlForm);

} // namespace vantrel
