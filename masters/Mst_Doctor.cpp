#include "core/KeyFilters.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "masters/MasterScreen.h"

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

MasterDefinition DoctorDefinition() {
    MasterDefinition d = StandardMaster(u"Mst_Doctor"_s, u"Prescriber"_s, u"DOCTOR"_s, u"Prescriber"_s,
                                        u"SELECT * FROM Prescriber ORDER BY Name, Code"_s,
                                        u"List of All Avaliable Prescribers"_s,
                                        u"Locate a Specified Prescriber"_s, u"   [Prescriber Master]"_s);
    d.locator = u"SELECT Code, Name FROM Prescriber ORDER BY Name, Code"_s;
    d.colours = u"MstDet"_s;
    d.nameBox = u"TxtName"_s;
    d.empty = u"Prescriber Name Should Not be Blank."_s;
    d.blank = u"Presciber's Name Should Not be Blank."_s;
    d.duplicate = u"Duplicate Prescriber Name."_s;
    d.buttons = {u"CmdTop"_s,    u"CmdPrevious"_s, u"CmdNext"_s, u"CmdEnd"_s,    u"CmdNew"_s, u"CmdUpdate"_s,
                 u"CmdLocate"_s, u"CmdDelete"_s,   u"CmdSave"_s, u"CmdCancel"_s, u"CmdExit"_s};
    d.captions = {u"&Top"_s,    u"&Previous"_s, u"&Next"_s, u"&End"_s,    u"Ne&w"_s, u"&Edit"_s,
                  u"&Locate"_s, u"&Delete"_s,   u"&Save"_s, u"&Cancel"_s, u"E&xit"_s};
    return d;
}

KeyResult Upper(int key, const QString&, int) {
    return KeyUpperCase(key);
}

KeyResult Telephone(int key, const QString& text, int) {
    return KeyTelephone(key, text, true);
}

} // namespace

// The doctors of the clinic and the referring doctors. The clinic user's own row belongs to the parameter
// screen: it shows here but is neither edited nor deleted.
class Mst_Doctor : public MasterScreen {
public:
    explicit Mst_Doctor(Process& owner) : MasterScreen(owner, DoctorDefinition()) {
        form = u"Mst_Doctor"_s;
        // The fields in the order the form shows them: the prescriber, then the address and contact.
        for (const auto& [name, column] :
             {std::pair{u"TxtRegnNo"_s, u"ReGnNo"_s}, {u"TxtQualification"_s, u"Quali"_s}})
            addTextField(name, column).keyFilter = KeyName;
        addComboField(u"CmbDepartment"_s, u"Department"_s,
                      u"SELECT Code, Name FROM Department ORDER BY Name, Code"_s, u"Invalid Department."_s);
        addLinesField(u"Txtspec"_s, u"Specilise"_s);
        addTextField(u"TxtTiming"_s, u"DayTiming"_s).keyFilter = [](int key, const QString&,
                                                                    int) -> KeyResult {
            return {key == '\'' ? 0 : key, false};
        };
        // The charge is a number: a blank box stores 0.
        m_charges = &add<TextBox>(u"TxtCharges"_s);
        m_charges->keyFilter = [](int key, const QString& text, int selStart) {
            return KeyDecimal(key, 6, 2, text, selStart);
        };
        addLinesField(u"TxtAddress"_s, u"Address"_s);
        addComboField(u"DBCCity"_s, u"City"_s, u"SELECT Code, Name FROM City ORDER BY Name, Code"_s,
                      u"Invalid City."_s);
        for (const auto& [name, column] : {std::pair{u"TxtPhone"_s, u"Phone"_s},
                                           {u"TxtCell"_s, u"Cell"_s},
                                           {u"TxtPager"_s, u"Pager"_s},
                                           {u"TxtFax"_s, u"Fax"_s}})
            addTextField(name, column).keyFilter = Telephone;
        addTextField(u"TxtEmail"_s, u"Email"_s).keyFilter = [](int key, const QString&, int) {
            return KeyLowerCase(key);
        };
        // The printed details of a prescriber come with the program's reports; until then the button says
        // the option is not there.
        m_print = &add<Button>(u"CmdPrint"_s);
        m_print->setCaption(u"&Print"_s);
        m_print->onClick = [this] { prompter().info(u"Option Not Available."_s); };
    }

protected:
    bool openingChecks() override {
        if (!db().exists(u"SELECT Code FROM City"_s)) {
            prompter().stop(u"No City is Defined."_s);
            return false;
        }
        if (!db().exists(u"SELECT Code FROM Department"_s)) {
            prompter().stop(u"No Department is Defined."_s);
            return false;
        }
        return true;
    }

    void lockFields(bool editing) override {
        m_charges->setLocked(!editing);
        m_print->setEnabled(!editing && currentCode() != 0);
    }

    void clearFields() override { m_charges->setText(QString()); }

    void showFields(const Row* row) override {
        m_charges->setText(row ? QString::number(row->real(u"VisitAmt"_s), 'g', 12) : QString());
    }

    void writeFields(std::vector<std::pair<QString, QVariant>>& columns) override {
        columns.emplace_back(u"VisitAmt"_s, m_charges->text().trimmed().toDouble());
    }

    bool mayEdit() override {
        if (!IsClinicUser())
            return true;
        prompter().stop(
            u"To Update the Clinic User Information, Switch To User Information In Control Master."_s);
        return false;
    }

    bool mayDelete() override {
        if (!IsClinicUser())
            return true;
        prompter().stop(u"Can not Delete the Clinic User Information."_s);
        return false;
    }

    // The prescribers' own locator, once the program has it; until then the common one.
    qint64 locate() override {
        if (!ScreenRegistry::instance().has(u"Find_Doctor"_s))
            return MasterScreen::locate();
        state().SelectedCode = currentCode();
        state().QueryMode = false;
        process().openModal(u"Find_Doctor"_s);
        return state().SelectedCode;
    }

private:
    // A box of several lines in capitals.
    void addLinesField(const QString& control, const QString& column) {
        auto& box = addTextField(control, column);
        box.setMultiLine(true);
        box.keyFilter = Upper;
    }

    bool IsClinicUser() const {
        return nameBox().text().trimmed().compare(state().Params.text(u"Clinic_User"_s).trimmed(),
                                                  Qt::CaseInsensitive) == 0;
    }

    TextBox* m_charges = nullptr;
    Button* m_print = nullptr;
};

VANTREL_SCREEN(Mst_Doctor);

} // namespace vantrel
