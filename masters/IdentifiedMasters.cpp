#include "core/KeyFilters.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "masters/MasterScreen.h"

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

// An identity a master keeps beside the name: unique among the rows when given, and perhaps required.
struct Identity {
    QString box;
    QString column;
    QString caption;
    QString duplicate; // a value another row has
    QString empty;     // required: blank at save
    QString blank;     // required: blank on leaving the box
};

struct IdentifiedDefinition {
    MasterDefinition master;
    std::vector<Identity> identities;
};

// Masters of names with identities: sponsors and payors with their id, employers with their company and
// doctor ids.
class IdentifiedMaster : public MasterScreen {
public:
    IdentifiedMaster(Process& owner, const IdentifiedDefinition& definition)
        : MasterScreen(owner, definition.master), m_identities(definition.identities) {
        form = definition.master.screen;
        for (const Identity& identity : m_identities) {
            auto& box = add<TextBox>(identity.box);
            box.setCaption(identity.caption);
            box.keyFilter = [](int key, const QString& text, int selStart) {
                return KeyName(key, text, selStart);
            };
            box.onValidate = [this, &box, &identity] {
                if (EditMode() == 0)
                    return true;
                const QString value = box.text().trimmed();
                if (value.isEmpty() && !identity.blank.isEmpty()) {
                    prompter().stop(identity.blank);
                    return false;
                }
                if (!value.isEmpty() &&
                    IsValueTaken(identity.column, value, EditMode() == 1 ? 0 : currentCode())) {
                    prompter().stop(identity.duplicate);
                    return false;
                }
                return true;
            };
            m_boxes.push_back(&box);
        }
    }

protected:
    void lockFields(bool editing) override {
        for (TextBox* box : m_boxes)
            box->setLocked(!editing);
    }
    void clearFields() override {
        for (TextBox* box : m_boxes)
            box->setText(QString());
    }
    void showFields(const Row* row) override {
        for (size_t i = 0; i < m_boxes.size(); ++i)
            m_boxes[i]->setText(row ? row->text(m_identities[i].column) : QString());
    }

    bool validateFields() override {
        for (size_t i = 0; i < m_boxes.size(); ++i) {
            const Identity& identity = m_identities[i];
            const QString value = m_boxes[i]->text().trimmed();
            QString refusal;
            if (value.isEmpty() && !identity.empty.isEmpty())
                refusal = identity.empty;
            else if (!value.isEmpty() &&
                     IsValueTaken(identity.column, value, EditMode() == 1 ? 0 : currentCode()))
                refusal = identity.duplicate;
            if (!refusal.isEmpty()) {
                prompter().stop(refusal);
                setFocus(*m_boxes[i]);
                return false;
            }
        }
        return true;
    }

    void writeFields(std::vector<std::pair<QString, QVariant>>& columns) override {
        for (size_t i = 0; i < m_boxes.size(); ++i)
            columns.emplace_back(m_identities[i].column, m_boxes[i]->text().trimmed());
    }

private:
    std::vector<Identity> m_identities;
    std::vector<TextBox*> m_boxes;
};

IdentifiedDefinition Sponsor() {
    MasterDefinition d = StandardMaster(
        u"Mst_Sponsor"_s, u"Payer"_s, u"SPONSOR"_s, u"Sponsor / Payor"_s,
        u"SELECT * FROM Payer ORDER BY PayerName, Code"_s, u"List of All Avaliable Sponsors / Payors"_s,
        u"Locate a Specified Sponsor / Payor"_s, u"   [Sponsor / Payor Master]"_s);
    d.nameColumn = u"PayerName"_s;
    d.locator = u"SELECT Code, PayerName AS Name FROM Payer ORDER BY PayerName, Code"_s;
    NameMessages(d, u"Sponsor / Payor Name"_s, u"Duplicate Sponsor / Payor."_s);
    return {d, {{u"TxtEmpID"_s, u"PayerID"_s, u"Sponsor ID"_s, u"Duplicate Sponsor ID."_s, {}, {}}}};
}

IdentifiedDefinition Employer() {
    MasterDefinition d =
        StandardMaster(u"Mst_Employer"_s, u"Company"_s, u"EMPLOYER"_s, u"Company / Employer"_s,
                       u"SELECT * FROM Company ORDER BY CompanyName, Code"_s,
                       u"List of All Avaliable Companies / Employers"_s,
                       u"Locate a Specified Company / Employer"_s, u"   [Company / Employer Master]"_s);
    d.nameColumn = u"CompanyName"_s;
    d.locator = u"SELECT Code, CompanyName AS Name FROM Company ORDER BY CompanyName, Code"_s;
    NameMessages(d, u"Company / Employer Name"_s, u"Duplicate Company / Employer."_s);
    return {d,
            {{u"TxtEmpID"_s, u"CompanyID"_s, u"Company ID"_s, u"Duplicate Company ID."_s, {}, {}},
             {u"TxtDocID"_s, u"DoctorID"_s, u"Doctor / Prescriber ID"_s, u"Duplicate Doctor ID."_s,
              u"Doctor / Prescriber ID Should Not be Empty."_s, u"Doctor ID Should Not be Blank."_s}}};
}

const bool registered = [] {
    for (const IdentifiedDefinition& definition : {Sponsor(), Employer()}) {
        ScreenRegistry::instance().add(definition.master.screen, [definition](Process& process) {
            return std::unique_ptr<Screen>(new IdentifiedMaster(process, definition));
        });
    }
    return true;
}();

} // namespace

} // namespace vantrel
