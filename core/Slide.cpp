#include "core/Host.h"
#include "core/Launcher.h"
#include "core/Lookup.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "core/Screen.h"
#include "core/Startup.h"

#include <QFileInfo>
#include <map>

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

const std::map<QString, QString>& SecondLevelTargets() {
    static const std::map<QString, QString> targets = {
        {u"CITY MASTER"_s, u"Mst_City"_s},
        {u"SPONSOR / PAYOR"_s, u"Mst_Sponsor"_s},
        {u"COMPANY / EMPLOYER"_s, u"Mst_Employer"_s},
        {u"PHYSICAL EXAMINATIONS"_s, u"Mst_Physical"_s},
        {u"VACCINATION MASTERS"_s, u"FrmMst_Vaccination"_s},
        {u"PATIENT DETAILS"_s, u"Mst_Patient"_s},
        {u"PRESCRIBER DETAILS"_s, u"Mst_Doctor"_s},
        {u"SERIES MAINTENANCE"_s, u"Mst_Series"_s},
        {u"IMMUNIZATION SCHEDULES"_s, u"FrmSchedule"_s},
        {u"BRAND DETAILS"_s, u"FrmGenericName"_s},
        {u"DISEASE DETAILS"_s, u"Mst_Disease"_s},
        {u"MONOGRAPHS EDITOR"_s, u"FrmMonoGraph"_s},
        {u"HANDOUTS EDITOR"_s, u"FrmListHandOuts"_s},
        {u"DISEASE MAINTENANCE"_s, u"FrmDiseaseLink"_s},
        {u"VANTREL"_s, u"FrmPrescription"_s},
        {u"PAYMENT RECEIPT"_s, u"FrmReceipt"_s},
        {u"IMMUNIZATION"_s, u"FrmImmunization"_s},
        {u"PATIENT HISTORY"_s, u"FrmHistory"_s},
        {u"SNAPSHOT VIEWER"_s, u"FrmSnapCompare"_s},
        {u"DRUG MONOGRAPHS"_s, u"FrmLib"_s},
        {u"CHILD GROWTH STATUS"_s, u"FrmGrowth"_s},
        {u"HANDOUTS / DOCUMENTS"_s, u"FrmHandOut"_s},
        {u"CORONARY RISK PREDICTION"_s, u"FrmRisk"_s},
        {u"READYMADE PRESCRIPTIONS"_s, u"FrmReadyMade"_s},
        {u"PRESCRIPTION(S) CHECK-LIST"_s, u"FrmCheckList"_s},
        {u"IMMUNIZATION REMINDERS"_s, u"FrmSchReminder"_s},
        {u"PRESCRIBER DETAILS REPORTS"_s, u"FrmPrescriberPrint"_s},
        {u"PATIENT DETAILS REPORTS"_s, u"FrmPatientPrint"_s},
        {u"DRUG DETAILS REPORTS"_s, u"FrmPharmaPrint"_s},
        {u"MASTER REPORTS"_s, u"FrmMastersList"_s},
        {u"DRUG QUERY"_s, u"Find_Pharmaname"_s},
        {u"BRAND QUERY"_s, u"Find_Genericname"_s},
        {u"PATIENT QUERY"_s, u"Find_Patient"_s},
        {u"MASTERS QUERY"_s, u"FrmMasterQry"_s},
        {u"PRESCRIBER QUERY"_s, u"Find_Doctor"_s},
        {u"VANTREL QUERY"_s, u"Find_Prescription"_s},
        {u"PATIENT INVESTIGATIONS QUERY"_s, u"FrmInvQuery"_s},
        {u"SUBSTITUTE / INTERACTION QUERY"_s, u"FrmInteraction"_s},
        {u"REPAIR DATABASE"_s, u"FrmRepair"_s},
        {u"BACKUP DATABASE"_s, u"FrmBackUp"_s},
        {u"RESTORE DATABASE"_s, u"FrmReStore"_s},
        {u"COMPACT DATABASE"_s, u"FrmCompact"_s},
        {u"APPOINTMENTS / TASK DIARY"_s, u"FrmAppoint"_s},
        {u"MESSAGE SCHEDULER"_s, u"Organisor"_s},
        {u"CONTROL PARAMETERS"_s, u"ControlForm"_s},
        {u"PRESCRIPTION DISPOSAL"_s, u"FrmDelete"_s},
        {u"PRESCRIPTION RENUMBERING"_s, u"FrmReNumbering"_s},
        {u"KEY FEATURES"_s, u"FrmFeature"_s},
        {u"CALENDAR"_s, u"FrmCalendar"_s},
        {u"CALCULATOR"_s, u"Calculator"_s},
        {u"ABOUT VANTREL 3.0"_s, u"frmAbout"_s},
    };
    return targets;
}

// The look-ups of the launcher: the locator opens as a view, nothing is selected in it.
const QStringList kQueries = {u"DRUG QUERY"_s,       u"BRAND QUERY"_s,   u"PATIENT QUERY"_s,
                              u"PRESCRIBER QUERY"_s, u"VANTREL QUERY"_s, u"OPD CARD QUERY"_s,
                              u"VISIT QUERY"_s};

// The front desk's own options, and the parameters of the front desk.
const std::map<QString, QString>& FrontDeskTargets() {
    static const std::map<QString, QString> targets = {
        {u"CONTROL PARAMETERS"_s, u"ControlOPD"_s},
        {u"OPD CARDS"_s, u"FrmOPDCard"_s},
        {u"VISITS"_s, u"FrmVisit"_s},
        {u"OPD CARD QUERY"_s, u"Find_OPD"_s},
        {u"VISIT QUERY"_s, u"Find_Visit"_s},
    };
    return targets;
}

// What a third-level option opens: by its text, and for some by the second-level option above it. An empty
// `under` stands for any second-level option; `other` for any but the document templates.
struct SubTarget {
    QString under;
    QString option;
    QString screen;
    QString mode;
};

const QString kTemplates = u"DOCUMENT TEMPLATES"_s;
const QString kOther = u"*OTHER*"_s;

const std::vector<SubTarget>& ThirdLevelTargets() {
    static const std::vector<SubTarget> targets = {
        {{}, u"CONTRA INDICATION MASTER"_s, u"Mst_Contra"_s, {}},
        {{}, u"INDICATION MASTER"_s, u"Mst_Indication"_s, {}},
        {{}, u"INTERACTION TYPES MASTER"_s, u"Mst_Interaction"_s, {}},
        {{}, u"SIDE EFFECT MASTER"_s, u"Mst_SideEffect"_s, {}},
        {{}, u"SPL. PRECAUTION MASTER"_s, u"Mst_SpecialCare"_s, {}},
        {{}, u"DRUG GROUP MASTER"_s, u"Mst_DrugGroup"_s, {}},
        {{}, u"DOSAGE FORM MASTER"_s, u"Mst_DosageForm"_s, {}},
        {{}, u"MANUFACTURER MASTER"_s, u"Mst_Company"_s, {}},
        {{}, u"GROUP MASTER"_s, u"Mst_Group"_s, {}},
        {{}, u"SUB GROUP MASTER"_s, u"Mst_SubGroup"_s, {}},
        {{}, u"OCCUPATIONS MASTER"_s, u"Mst_Allergy"_s, u"O"_s},
        {{}, u"RELATIONSHIP MASTER"_s, u"Mst_Allergy"_s, u"R"_s},
        {{}, u"PERSONAL DETAILS MASTER"_s, u"Mst_Allergy"_s, u"P"_s},
        {{}, u"ALLERGY TYPES MASTER"_s, u"Mst_Allergy"_s, u"T"_s},
        {{}, u"ALLERGIES MASTER"_s, u"Mst_Allergy"_s, u"A"_s},
        {{}, u"SUB-ALLERGIES MASTER"_s, u"Mst_Allergy"_s, u"S"_s},
        {{}, u"COMPLAINTS MASTER"_s, u"Mst_Complaints"_s, {}},
        {{}, u"DOSAGE REMARKS"_s, u"Mst_DsgRemarks"_s, {}},
        {{}, u"DOSAGE SYMBOLS"_s, u"Mst_Symbols"_s, {}},
        {{}, u"PROCEDURES MASTER"_s, u"Mst_Surgery"_s, {}},
        {{}, u"OPD DEPARTMENTS"_s, u"Mst_Department"_s, {}},
        {{}, u"INVESTIGATION CATEGORIES"_s, u"Mst_InvCategories"_s, {}},
        {{}, u"INVESTIGATION PROFILES"_s, u"Mst_InvProfiles"_s, {}},
        {{}, u"INVESTIGATIONS"_s, u"Mst_Investigation"_s, {}},
        {{}, u"PROFILE MAINTENANCE"_s, u"FrmInvProfiles"_s, {}},
        {{}, u"DRUGS MASTER"_s, u"FrmPharmaName"_s, {}},
        {{}, u"DRUGS GROUPING"_s, u"FrmPharmaGroup"_s, {}},
        {kTemplates, u"FITNESS CERTIFICATE"_s, u"FrmTemplate"_s, u"Fitness Certificate"_s},
        {kOther, u"FITNESS CERTIFICATE"_s, u"FrmMedical"_s, u"Fitness Certificate"_s},
        {kTemplates, u"HEALTH / FITNESS CERTIFICATE"_s, u"FrmTemplate"_s, u"Health Certificate"_s},
        {kOther, u"HEALTH / FITNESS CERTIFICATE"_s, u"FrmHealth"_s, {}},
        {kTemplates, u"MEDICAL CERTIFICATE"_s, u"FrmTemplate"_s, u"Medical Certificate"_s},
        {kOther, u"MEDICAL CERTIFICATE"_s, u"FrmMedical"_s, u"Medical Certificate"_s},
        {kTemplates, u"INVESTIGATION REPORTS"_s, u"FrmInvTemplate"_s, {}},
        {kOther, u"INVESTIGATION REPORTS"_s, u"FrmInvPrint"_s, {}},
        {kTemplates, u"PAYMENT RECEIPTS"_s, u"FrmTemplate"_s, u"Receipt Series Templates"_s},
        {u"SUMMARISED DAILY REPORTS"_s, u"CONSOLIDATED REPORT"_s, u"FrmDailyPrint"_s, u"Consolidated"_s},
        {u"SUMMARISED DAILY REPORTS"_s, u"PAYMENT BY CASH"_s, u"FrmDailyPrint"_s, u"By Cash"_s},
        {u"SUMMARISED DAILY REPORTS"_s, u"PAYMENT BY CHEQUE/DRAFT"_s, u"FrmDailyPrint"_s,
         u"By Cheque / Draft"_s},
        {u"SUMMARISED DAILY REPORTS"_s, u"PAYMENT ON CREDIT"_s, u"FrmDailyPrint"_s, u"On Credit"_s},
        {u"IMMUNIZATION REPORTS"_s, u"CONSOLIDATED REPORT"_s, u"FrmSchSummary"_s, u"Consolidated"_s},
        {u"IMMUNIZATION REPORTS"_s, u"ACTIVE SCHEDULES"_s, u"FrmSchSummary"_s, u"Active Schedule(s)"_s},
        {u"IMMUNIZATION REPORTS"_s, u"CLOSED SCHEDULES"_s, u"FrmSchSummary"_s, u"Closed Schedule(s)"_s},
        {u"IMMUNIZATION REPORTS"_s, u"COMPLETED SCHEDULES"_s, u"FrmSchSummary"_s, u"Completed Schedule(s)"_s},
        {u"IMMUNIZATION REPORTS"_s, u"RESCHEDULED SCHEDULES"_s, u"FrmSchSummary"_s,
         u"Re-Scheduled Schedule(s)"_s},
        {u"VACCINE SUMMARY REPORTS"_s, u"CONSOLIDATED REPORT"_s, u"FrmSchVaccine"_s, u"Consolidated"_s},
        {u"VACCINE SUMMARY REPORTS"_s, u"DUE VACCINES"_s, u"FrmSchVaccine"_s, u"Due Vaccine(s)"_s},
        {u"VACCINE SUMMARY REPORTS"_s, u"SKIPPED VACCINES"_s, u"FrmSchVaccine"_s, u"Skipped Vaccine(s)"_s},
        {u"VACCINE SUMMARY REPORTS"_s, u"VACCINATED VACCINES"_s, u"FrmSchVaccine"_s,
         u"Vaccinated Vaccine(s)"_s},
        {u"BRAND DETAILS REPORTS"_s, u"CONSOLIDATED REPORT"_s, u"FrmBrandPrint"_s, u"Consolidated"_s},
        {u"BRAND DETAILS REPORTS"_s, u"COMPANY WISE GROUPING"_s, u"FrmBrandPrint"_s, u"Company Wise"_s},
        {u"BRAND DETAILS REPORTS"_s, u"GROUP NAME WISE GROUPING"_s, u"FrmBrandPrint"_s, u"Group Wise"_s},
        {u"VANTREL REPORTS"_s, u"CONSOLIDATED REPORT"_s, u"FrmPadPrint"_s, u"Consolidated"_s},
        {u"VANTREL REPORTS"_s, u"DATE WISE GROUPING"_s, u"FrmPadPrint"_s, u"Date"_s},
        {u"VANTREL REPORTS"_s, u"PATIENT WISE GROUPING"_s, u"FrmPadPrint"_s, u"Patient"_s},
        {u"VANTREL REPORTS"_s, u"BRAND WISE GROUPING"_s, u"FrmPadPrint"_s, u"Brands [Trade Name]"_s},
        {u"VANTREL REPORTS"_s, u"DISEASES WISE GROUPING"_s, u"FrmPadPrint"_s, u"Disease"_s},
        {u"VANTREL REPORTS"_s, u"PROCEDURE WISE GROUPING"_s, u"FrmPadPrint"_s, u"Procedure"_s},
        {u"NEXT CHECKUP REPORTS"_s, u"CONSOLIDATED REPORT"_s, u"FrmCheckUpPrint"_s, u"Consolidated"_s},
        {u"NEXT CHECKUP REPORTS"_s, u"DATE WISE GROUPING"_s, u"FrmCheckUpPrint"_s, u"Date"_s},
        {u"NEXT CHECKUP REPORTS"_s, u"PATIENT WISE GROUPING"_s, u"FrmCheckUpPrint"_s, u"Patient"_s},
        {u"NEXT CHECKUP REPORTS"_s, u"DISEASES WISE GROUPING"_s, u"FrmCheckUpPrint"_s, u"Disease"_s},
        {u"NEXT CHECKUP REPORTS"_s, u"PROCEDURE WISE GROUPING"_s, u"FrmCheckUpPrint"_s, u"Procedure"_s},
        {u"PATIENT INVESTIGATION REPORTS"_s, u"CONSOLIDATED REPORT"_s, u"FrmInvestigationPrint"_s,
         u"Consolidated"_s},
        {u"PATIENT INVESTIGATION REPORTS"_s, u"DATE WISE GROUPING"_s, u"FrmInvestigationPrint"_s, u"Date"_s},
        {u"PATIENT INVESTIGATION REPORTS"_s, u"PATIENT WISE GROUPING"_s, u"FrmInvestigationPrint"_s,
         u"Patient"_s},
        {u"PATIENT INVESTIGATION REPORTS"_s, u"INVESTIGATION WISE GROUPING"_s, u"FrmInvestigationPrint"_s,
         u"Investigation"_s},
        {u"PATIENT INVESTIGATION REPORTS"_s, u"PRESCRIPTION WISE GROUPING"_s, u"FrmInvestigationPrint"_s,
         u"Prescription"_s},
    };
    return targets;
}

// The pictures of the main options, by application.
const QStringList kMainCaptions = {
    u"Prescriptions"_s, u"Masters"_s,   u"Drugs & Diseases"_s, u"Clinical Tools"_s, u"Reports"_s,
    u"Queries"_s,       u"Organiser"_s, u"Utilities"_s,        u"Exit"_s,           u"Health Topics"_s};
const QStringList kFrontDeskCaptions = {u"Front Desk"_s, u"Masters"_s,      u"Documents"_s, u"Reports"_s,
                                        u"Queries"_s,    u"Organiser"_s,    u"Utilities"_s, u"Help"_s,
                                        u"Exit"_s,       u"Health Topics"_s};

constexpr int kMainOptions = 10;
constexpr int kSecondLevel = 12;
constexpr int kThirdLevel = 6;
constexpr int kExitOption = 9;
constexpr int kTopicsOption = 10;

} // namespace

LauncherTarget LauncherSecondLevel(int runMode, const QString& option) {
    const QString text = option.trimmed().toUpper();
    const bool query = kQueries.contains(text);
    if (runMode == 2) {
        const auto& own = FrontDeskTargets();
        if (const auto it = own.find(text); it != own.end())
            return {it->second, {}, query};
    }
    const auto& targets = SecondLevelTargets();
    if (const auto it = targets.find(text); it != targets.end())
        return {it->second, {}, query};
    return {};
}

LauncherTarget LauncherThirdLevel(const QString& secondLevel, const QString& option) {
    const QString under = secondLevel.trimmed().toUpper();
    const QString text = option.trimmed().toUpper();
    for (const SubTarget& t : ThirdLevelTargets()) {
        if (t.option != text)
            continue;
        if (t.under.isEmpty() || t.under == under || (t.under == kOther && under != kTemplates))
            return {t.screen, t.mode, false};
    }
    return {};
}

// The home of the program: ten main options as pictures, the second-level options of the chosen one in
// text beside them and, for some, third-level options. The options come from the tables of the
// application (Level2 and Level3, or OPDLevel2 and OPDLevel3 at the front desk); what each opens is bound
// to its text.
class Slide : public Screen {
public:
    Slide(Process& owner, const QString& name, const QString& level2, const QString& level3)
        : Screen(owner, name), m_level2(level2), m_level3(level3) {
        enterAsTab = false;
        const QStringList& captions = state().RunMode == 2 ? kFrontDeskCaptions : kMainCaptions;
        for (int i = 0; i < kMainOptions; ++i) {
            auto& picture = add<ImageBox>(u"ImgMain"_s, i);
            picture.setCaption(captions.value(i));
            picture.setResource(MainPicture(i, false));
            picture.onClick = [this, i] { MainOption(i); };
            picture.onHover = [this, i](bool over) {
                if (over && m_hovered != i)
                    process().playSound(u"MOVE"_s);
                if (over)
                    m_hovered = i;
                else if (m_hovered == i)
                    m_hovered = -1;
                PaintPictures();
            };
        }
        m_heading = &add<Label>(u"LblHeading"_s);
        m_exit = &add<Label>(u"LblExit"_s);
        for (int i = 0; i < kSecondLevel; ++i) {
            auto& option = add<Label>(u"LblOption"_s, i);
            option.onHover = [this, i](bool over) {
                if (over)
                    HoverOption(i);
            };
            option.onClick = [this, i] { ClickOption(i); };
        }
        for (int i = 0; i < kThirdLevel; ++i) {
            auto& option = add<Label>(u"LblSubOption"_s, i);
            option.onHover = [this, i](bool over) {
                if (over)
                    HoverSubOption(i);
            };
            option.onClick = [this, i] { ClickSubOption(i); };
        }
        m_description = &add<Label>(u"LblDescription"_s);
        m_subDescription = &add<Label>(u"LblSubDescription"_s);
        m_movie = &add<ImageBox>(u"ImgMovie"_s);
        // The two animations of the launcher, when the program folder has them.
        const QStringList pads = {u"Pad$01._$1"_s, u"Pad$02._$2"_s};
        for (int i = 0; i < pads.size(); ++i) {
            const QString file = state().AppPath + pads[i];
            const bool shown = QFileInfo(file).isFile();
            auto& pad = add<ImageBox>(u"ImgPad"_s, i);
            pad.setResource(shown ? file : QString());
            pad.setVisible(shown);
        }
    }

    void load() override {
        host().setMainTitle(state().AppTitle);
        MainOption(0, false);
    }

    // The launcher is in front again: at start, and each time the last screen opened from it closes. It shows
    // as it was left, the main window's title is the program's own again and the person stands on the option
    // they chose last.
    void activate() override {
        host().setMainTitle(state().AppTitle);
        if (m_active >= 0)
            setFocus(u"LblOption"_s, m_active);
        else
            setFocus(u"ImgMain"_s, m_main - 1);
    }

    // Only the program's own exit closes the launcher.
    bool queryClose() override { return state().Exiting; }

private:
    struct Option {
        qint64 number = 0;
        QString name;
        QString description;
        QString movie;
    };

    // The front desk has pictures of its own for the options that differ.
    QString MainPicture(int index, bool lit) const {
        static const int frontDesk[kMainOptions] = {11, 2, 12, 5, 6, 7, 8, 13, 9, 10};
        const int picture = state().RunMode == 2 ? frontDesk[index] : index + 1;
        return u":/images/Main%1%2.png"_s.arg(picture).arg(lit ? u"Over"_s : QString());
    }

    void PaintPictures() {
        for (Control* c : array(u"ImgMain"_s)) {
            const bool lit = c->index() == m_main - 1 || c->index() == m_hovered;
            static_cast<ImageBox*>(c)->setResource(MainPicture(c->index(), lit));
        }
    }

    // A click on picture `index`: its second-level options, or the exit prompt.
    void MainOption(int index, bool withSound = true) {
        if (withSound)
            process().playSound(u"CLICK"_s);
        m_main = index + 1;
        PaintPictures();
        setFocus(u"ImgMain"_s, index);
        m_heading->setCaption(array(u"ImgMain"_s).at(index)->caption());
        ClearThirdLevel();
        m_active = -1;
        ShowDescription(*m_description, QString());
        ShowMovie(QString());
        m_options.clear();
        if (m_main == kExitOption) {
            m_exit->setCaption(u"Sure ! You want to Exit"_s);
            m_exit->setVisible(true);
            m_options = {{0, u"Yes"_s, {}, {}}, {0, u"No"_s, {}, {}}};
        } else {
            m_exit->setVisible(false);
            QString sql =
                u"SELECT MenuNo, MenuName, MenuDesc, MovieName FROM %1 WHERE MainMenuNo = ?"_s.arg(m_level2);
            if (!state().AdminLogin)
                sql += u" AND ShowOption <> 0"_s;
            if (!state().Params.flag(u"DefaultUser"_s))
                sql += u" AND DefaultUser = 0"_s;
            sql += u" ORDER BY MenuNo"_s;
            for (const Row& row : db().select(sql, {m_main})) {
                m_options.push_back({row.integer(u"MenuNo"_s), row.text(u"MenuName"_s),
                                     row.text(u"MenuDesc"_s), row.text(u"MovieName"_s)});
            }
        }
        const auto labels = array(u"LblOption"_s);
        for (int i = 0; i < kSecondLevel; ++i) {
            const bool shown = i < static_cast<int>(m_options.size());
            labels[i]->setCaption(shown ? m_options[i].name : QString());
            labels[i]->setVisible(shown);
        }
    }

    void ClearThirdLevel() {
        m_subOptions.clear();
        m_thirdShowing = false;
        for (Control* c : array(u"LblSubOption"_s)) {
            c->setCaption(QString());
            c->setVisible(false);
        }
        ShowDescription(*m_subDescription, QString());
    }

    void HoverOption(int index) {
        if (index >= static_cast<int>(m_options.size()) || index == m_active)
            return;
        process().playSound(u"MOVE"_s);
        m_active = index;
        setFocus(u"LblOption"_s, index);
        const Option& option = m_options[index];
        ClearThirdLevel();
        if (m_main != kExitOption) {
            const Rows rows = db().select(
                u"SELECT SubMenu, MenuDesc FROM %1 WHERE MainMenuNo = ? AND MenuNo = ? ORDER BY SubMenuNo"_s
                    .arg(m_level3),
                {m_main, option.number});
            const auto labels = array(u"LblSubOption"_s);
            for (int i = 0; i < static_cast<int>(rows.size()) && i < kThirdLevel; ++i) {
                m_subOptions.push_back({0, rows[i].text(u"SubMenu"_s), rows[i].text(u"MenuDesc"_s), {}});
                labels[i]->setCaption(m_subOptions.back().name);
                labels[i]->setVisible(true);
            }
            m_thirdShowing = !m_subOptions.empty();
        }
        const bool animation = option.description.compare(u"ANIMATION"_s, Qt::CaseInsensitive) == 0;
        ShowDescription(*m_description, animation ? QString() : option.description);
        ShowMovie(animation ? option.movie : QString());
    }

    // The movie of an option under the topics folder; a movie that is not there is left out.
    void ShowMovie(const QString& movie) {
        const QString file = state().TopicPath + movie;
        const bool shown = !movie.trimmed().isEmpty() && QFileInfo(file).isFile();
        m_movie->setResource(shown ? file : QString());
        m_movie->setVisible(shown);
    }

    void HoverSubOption(int index) {
        if (index < static_cast<int>(m_subOptions.size()))
            ShowDescription(*m_subDescription, m_subOptions[index].description);
    }

    // A description shows only when there is one.
    static void ShowDescription(Label& label, const QString& text) {
        label.setCaption(text);
        label.setVisible(!text.isEmpty());
    }

    void ClickOption(int index) {
        if (index >= static_cast<int>(m_options.size()))
            return;
        // The pointer stands on the option before it is clicked.
        HoverOption(index);
        if (m_thirdShowing)
            return;
        const QString text = m_options[index].name.toUpper();
        if (m_main == kExitOption) {
            if (text == u"YES"_s)
                Exit();
            else
                MainOption(0);
            return;
        }
        process().playSound(u"SELECT"_s);
        if (m_main == kTopicsOption) {
            OpenScreen(u"FrmTopics"_s,
                       [topic = m_options[index].name](Screen& s) { s.inputs.insert(u"Topic"_s, topic); });
            return;
        }
        if (text == u"HELP CONTENTS"_s) {
            ShowHelpContents(process());
            return;
        }
        if (text == u"HELP INDEX"_s) {
            ShowHelpIndex(process());
            return;
        }
        const LauncherTarget target = LauncherSecondLevel(state().RunMode, text);
        if (target.query)
            state().QueryMode = true;
        OpenScreen(target.screen, {});
    }

    void ClickSubOption(int index) {
        if (index >= static_cast<int>(m_subOptions.size()) || m_active < 0)
            return;
        process().playSound(u"SELECT"_s);
        const LauncherTarget target = LauncherThirdLevel(m_options[m_active].name, m_subOptions[index].name);
        if (target.screen.isEmpty()) {
            prompter().info(u"Option Not Available"_s);
            return;
        }
        OpenScreen(target.screen, [mode = target.mode](Screen& s) {
            if (!mode.isEmpty())
                s.inputs.insert(u"Mode"_s, mode);
        });
    }

    // Opens the screen of an option; an option whose screen the program does not have yet says so and the
    // launcher stays as it was.
    void OpenScreen(const QString& screen, const std::function<void(Screen&)>& setup) {
        if (screen.isEmpty() || !ScreenRegistry::instance().has(screen)) {
            state().QueryMode = false;
            prompter().info(u"Option Not Available."_s);
            return;
        }
        process().open(screen, setup);
    }

    void Exit() {
        process().playSound(u"STOP"_s);
        m_exit->setCaption(u"Thank You For Using Vantrel 3.0"_s);
        for (Control* c : array(u"LblOption"_s))
            c->setVisible(false);
        host().processEvents();
        ExitApplication(process());
    }

    QString m_level2;
    QString m_level3;
    int m_main = 1;
    int m_hovered = -1;
    int m_active = -1;
    bool m_thirdShowing = false;
    std::vector<Option> m_options;
    std::vector<Option> m_subOptions;
    Label* m_heading = nullptr;
    Label* m_exit = nullptr;
    Label* m_description = nullptr;
    Label* m_subDescription = nullptr;
    ImageBox* m_movie = nullptr;
};

namespace {

const bool registered = [] {
    ScreenRegistry::instance().add(u"Slide"_s, [](Process& process) {
        return std::unique_ptr<Screen>(new Slide(process, u"Slide"_s, u"Level2"_s, u"Level3"_s));
    });
    ScreenRegistry::instance().add(u"OPDSlide"_s, [](Process& process) {
        auto screen = std::make_unique<Slide>(process, u"OPDSlide"_s, u"OPDLevel2"_s, u"OPDLevel3"_s);
        screen->form = u"Slide"_s;
        return std::unique_ptr<Screen>(std::move(screen));
    });
    return true;
}();

} // namespace

} // namespace vantrel
