#include "core/ParameterScreen.h"
#include "core/Process.h"

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

using Kind = ParameterScreen::Kind;

std::vector<ParameterScreen::Field> FrontDeskFields() {
    return {
        {u"Chk_OPDSoundEffect"_s, u"OPDSoundEffect"_s, Kind::Flag, 0, 0, u"Enable Sound Effects"_s, {}},
        {u"Txt_OPDImpMessageDays"_s,
         u"OPDImpMessageDays"_s,
         Kind::Number,
         0,
         3,
         u"Show Important Message Before"_s,
         {}},
        {u"Txt_CardTitle"_s, u"CardTitle"_s, Kind::Text, 1, 0, u"OPD Card Title"_s, {}},
        {u"Txt_VisitTitle"_s, u"VisitTitle"_s, Kind::Text, 1, 0, u"Visit Title"_s, {}},
        {u"Txt_CardFooter"_s, u"CardFooter"_s, Kind::Text, 1, 0, u"OPD Card Footer"_s, {}},
        {u"Txt_VisitFooter"_s, u"VisitFooter"_s, Kind::Text, 1, 0, u"Visit Footer"_s, {}},
        {u"Txt_CardReceiptFor"_s, u"CardReceiptFor"_s, Kind::Text, 1, 0, u"OPD Card Receipt Text"_s, {}},
        {u"Txt_VisitReceiptFor"_s, u"VisitReceiptFor"_s, Kind::Text, 1, 0, u"Visit Receipt Text"_s, {}},
        {u"Txt_CardAmount"_s, u"CardAmount"_s, Kind::Number, 1, 6, u"OPD Card"_s, {}},
        {u"Txt_RenewAmount"_s, u"RenewAmount"_s, Kind::Number, 1, 6, u"Renewal"_s, {}},
        {u"Txt_CardValidity"_s, u"CardValidity"_s, Kind::Number, 1, 4, u"OPD Card"_s, {}},
        {u"Txt_RenewValidity"_s, u"RenewValidity"_s, Kind::Number, 1, 4, u"Renewal"_s, {}},
        {u"Txt_LastCardNo"_s, u"LastCardNo"_s, Kind::Number, 1, 8, u"OPD Card"_s, {}},
        {u"Txt_LastVisitNo"_s, u"LastVisitNo"_s, Kind::Number, 1, 8, u"Visit"_s, {}},
        {u"Chk_AllowDelCard"_s, u"AllowDelCard"_s, Kind::Flag, 1, 0, u"Allow Deletion of OPD Cards"_s, {}},
        {u"Chk_AllowUpdCard"_s, u"AllowUpdCard"_s, Kind::Flag, 1, 0, u"Allow Updation of OPD Cards"_s, {}},
        {u"Chk_AllowDelVisit"_s, u"AllowDelVisit"_s, Kind::Flag, 1, 0, u"Allow Deletion of Visits"_s, {}},
        {u"Chk_AllowUpdVisit"_s, u"AllowUpdVisit"_s, Kind::Flag, 1, 0, u"Allow Updation of Visits"_s, {}},
        {u"Chk_AllowDelPatient"_s,
         u"AllowDelPatient"_s,
         Kind::Flag,
         1,
         0,
         u"Allow Deletion of Patients"_s,
         {}},
        {u"Chk_PrintCardHeader"_s,
         u"PrintCardHeader"_s,
         Kind::Flag,
         1,
         0,
         u"Print Header In OPD Cards"_s,
         {}},
        {u"Chk_PrintCardFooter"_s,
         u"PrintCardFooter"_s,
         Kind::Flag,
         1,
         0,
         u"Print Footer In OPD Cards"_s,
         {}},
        {u"Chk_PrintVisitHeader"_s, u"PrintVisitHeader"_s, Kind::Flag, 1, 0, u"Print Header In Visits"_s, {}},
        {u"Chk_PrintVisitFooter"_s, u"PrintVisitFooter"_s, Kind::Flag, 1, 0, u"Print Footer In Visits"_s, {}},
        {u"Chk_PrintClinicAddInCard"_s,
         u"PrintClinicAddInCard"_s,
         Kind::Flag,
         1,
         0,
         u"Print Clinic Address"_s,
         {}},
        {u"Chk_PrintDoctorDetailInCard"_s,
         u"PrintDoctorDetailInCard"_s,
         Kind::Flag,
         1,
         0,
         u"Print Doctor Details"_s,
         {}},
        {u"Chk_PrintTimingInCard"_s, u"PrintTimingInCard"_s, Kind::Flag, 1, 0, u"Print Timings"_s, {}},
        {u"Chk_PrintRefByInCard"_s, u"PrintRefByInCard"_s, Kind::Flag, 1, 0, u"Print Referred By"_s, {}},
    };
}

std::vector<ParameterScreen::Colour> FrontDeskColours() {
    const QStringList first = {u"OPDFind"_s,    u"OPDGridHelp"_s, u"OPDPrint"_s,
                               u"OPDMaster"_s,  u"OPDMstDet"_s,   u"OPDInfo"_s,
                               u"OPDUtility"_s, u"OPDPhysical"_s, u"OPDVaccine"_s};
    const QStringList firstCaptions = {
        u"Find and Query"_s, u"Grid Help"_s,   u"Printing"_s,  u"Masters"_s,
        u"Master Details"_s, u"Information"_s, u"Utilities"_s, u"Physical Examination"_s,
        u"Immunization"_s};
    const QStringList second = {u"OPDDatabase"_s,    u"OPDDocument"_s,  u"OPDHistory"_s, u"OPDSnap"_s,
                                u"OPDAppointment"_s, u"Registration"_s, u"Visit"_s,      u"VisitPresDet"_s};
    const QStringList secondCaptions = {
        u"Database Utilities"_s, u"Documents"_s, u"History"_s, u"Snapshots"_s,
        u"Appointments"_s,       u"OPD Cards"_s, u"Visits"_s,  u"Visit Prescriptions"_s};
    return ParameterScreen::Sections(first, firstCaptions, second, secondCaptions);
}

const QStringList kGenerations = {u"Daily Basis"_s, u"Monthly Basis"_s, u"Yearly Basis"_s};

} // namespace

// The parameters of the front desk: its colours, the numbering, charges and validity of OPD cards and
// visits, and their print settings.
class ControlOPD : public ParameterScreen {
public:
    explicit ControlOPD(Process& owner)
        : ParameterScreen(owner, u"ControlOPD"_s, FrontDeskFields(), FrontDeskColours(), u"OPDScheduler"_s,
                          2) {
        tabs().tabs = {u"Colours and Passwords"_s, u"OPD Settings"_s};
        add<Label>(u"Fra_Section1"_s, -1, ControlKind::Frame).setCaption(u"Section - I "_s);
        add<Label>(u"Fra_Section2"_s, -1, ControlKind::Frame).setCaption(u"Section - II "_s);
        add<Label>(u"Fra_Charges"_s, -1, ControlKind::Frame)
            .setCaption(u"Default Charges  [ In Rs : 0 - 999999 ]"_s);
        add<Label>(u"Fra_Validity"_s, -1, ControlKind::Frame)
            .setCaption(u"Validity Periods  [ In Day(s) : 0 - 9999, Use 0 for Unlimited ]"_s);
        add<Label>(u"Fra_FirstNumbers"_s, -1, ControlKind::Frame)
            .setCaption(u"First Numbers  [ Not Allowed for Daily Basis ]"_s);
        for (const auto& [array, box] : {std::pair{u"ChkCardGen"_s, u"Txt_LastCardNo"_s},
                                         std::pair{u"ChkVisitGen"_s, u"Txt_LastVisitNo"_s}}) {
            for (int i = 0; i < 3; ++i) {
                auto& check = add<CheckBox>(array, i);
                check.setCaption(kGenerations[i]);
                check.placeOnTab(u"SSTab1"_s, 1);
                check.onClick = [this, array, box, i] { Generation(array, box, i); };
            }
        }
    }

protected:
    void afterLoad(const Row& row) override {
        Generation(u"ChkCardGen"_s, u"Txt_LastCardNo"_s, static_cast<int>(row.integer(u"CardGenBy"_s)));
        Generation(u"ChkVisitGen"_s, u"Txt_LastVisitNo"_s, static_cast<int>(row.integer(u"VisitGenBy"_s)));
    }

    void writeMore(std::vector<std::pair<QString, QVariant>>& columns) override {
        columns.emplace_back(u"CardGenBy"_s, Ticked(u"ChkCardGen"_s));
        columns.emplace_back(u"VisitGenBy"_s, Ticked(u"ChkVisitGen"_s));
    }

private:
    int Ticked(const QString& boxes) const {
        for (Control* c : array(boxes)) {
            if (static_cast<CheckBox*>(c)->value())
                return c->index();
        }
        return 0;
    }

    // Exactly one box of the three stays ticked; numbers made afresh each day have no first number.
    void Generation(const QString& boxes, const QString& box, int ticked) {
        ticked = std::clamp(ticked, 0, 2);
        for (Control* c : array(boxes))
            static_cast<CheckBox*>(c)->setValue(c->index() == ticked);
        static_cast<TextBox&>(*control(box)).setLocked(ticked == 0);
        control(box)->setEnabled(ticked != 0);
    }
};

VANTREL_SCREEN(ControlOPD);

} // namespace vantrel
