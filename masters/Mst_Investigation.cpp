#include "core/KeyFilters.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "masters/MasterScreen.h"

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

MasterDefinition InvestigationDefinition() {
    MasterDefinition d = StandardMaster(
        u"Mst_Investigation"_s, u"Investigation"_s, u"INVESTIGATION"_s, u"Investigation"_s,
        u"SELECT * FROM Investigation ORDER BY Name, Code"_s, u"List of All Avaliable Investigations"_s,
        u"Locate a Specified Investigation"_s, u"   [Investigation Master]"_s);
    d.locator = u"SELECT Code, Name FROM Investigation ORDER BY Name, Code"_s;
    d.colours = u"MstDet"_s;
    NameMessages(d, u"Investigation Name"_s, u"Duplicate Investigation."_s);
    d.blank = u"Investigation Name Should Not be Left Blank."_s;
    return d;
}

// The kinds of result as ResultType holds them: 1 numeric, 2 positive or negative, 3 yes or no, 4 text.
enum Result { None, Numeric, Positive, YesNo, Textual };

// The box of each kind, in the order of the kinds.
const QStringList kResultBoxes = {u"ChkResultNumeric"_s, u"ChkResultPositive"_s, u"ChkResultYes"_s,
                                  u"ChkResultText"_s};
const QStringList kResultCaptions = {u"Numeric Values"_s, u"Positive / Negative Values"_s,
                                     u"Yes / No Values"_s, u"Text Values"_s};

KeyResult Number(int key, const QString& text, int selStart) {
    return KeyDecimal(key, 7, 2, text, selStart);
}

} // namespace

// The investigations a clinic advises, with their charge, kind of result, normal values and categories.
class Mst_Investigation : public MasterScreen {
public:
    explicit Mst_Investigation(Process& owner) : MasterScreen(owner, InvestigationDefinition()) {
        form = u"Mst_Investigation"_s;
        addTextField(u"TxtDescription"_s, u"Description"_s).keyFilter = KeyName;
        // The charge is a number: a blank box stores 0.
        m_amount = &add<TextBox>(u"TxtAmount"_s);
        m_amount->keyFilter = Number;
        m_unit = &addTextField(u"TxtUnit"_s, u"mUnit"_s);
        m_unit->setCaption(u"Measuring Unit"_s);
        addTextField(u"TxtRemarks"_s, u"Remarks"_s);
        addFlagField(u"Chk_Template"_s, u"Template"_s).setCaption(u"Report Template"_s);
        addFlagField(u"Chk_General"_s, u"General"_s).setCaption(u"General Investigation"_s);
        for (int i = 0; i < kResultBoxes.size(); ++i) {
            auto& check = add<CheckBox>(kResultBoxes[i]);
            check.setCaption(kResultCaptions[i]);
            check.onClick = [this, &check, i] { SetResult(check.value() ? Result(i + 1) : None); };
        }
        m_from = &add<TextBox>(u"Txt_Normal"_s);
        m_to = &add<TextBox>(u"Txt_Normal1"_s);
        m_from->keyFilter = Number;
        m_to->keyFilter = Number;
        for (const auto& [name, caption] : {std::pair{u"ChkNormalPositive"_s, u"Positive"_s},
                                            {u"ChkNormalNegative"_s, u"Negative"_s},
                                            {u"ChkNormalYes"_s, u"Yes"_s},
                                            {u"ChkNormalNo"_s, u"No"_s}}) {
            add<CheckBox>(name).setCaption(caption);
        }
        Pair(u"ChkNormalPositive"_s, u"ChkNormalNegative"_s);
        Pair(u"ChkNormalYes"_s, u"ChkNormalNo"_s);
        m_categories = &add<ListBox>(u"LstCategory"_s);
        m_categories->checkBoxes = true;
    }

    void load() override {
        std::vector<ListRow> rows;
        for (const Row& row : db().select(u"SELECT Code, Name FROM InvCategory ORDER BY Name, Code"_s))
            rows.push_back({row.integer(u"Code"_s), {row.text(u"Name"_s)}, false});
        m_categories->setRows(std::move(rows));
        MasterScreen::load();
    }

protected:
    bool openingChecks() override {
        if (db().exists(u"SELECT Code FROM InvCategory"_s) || db().exists(u"SELECT Code FROM InvProfiles"_s))
            return true;
        prompter().stop(u"Could not Found any Investigation Category / Profile. Cannot Proceed."_s);
        return false;
    }

    void lockFields(bool editing) override {
        m_editing = editing;
        m_amount->setLocked(!editing);
        for (const QString& name : kResultBoxes)
            box(name).setEnabled(editing);
        m_categories->setEnabled(editing);
        SetResult(m_result);
    }

    void clearFields() override {
        m_amount->setText(QString());
        for (int row = 0; row < m_categories->count(); ++row)
            m_categories->setTicked(row, false);
        m_from->setText(QString());
        m_to->setText(QString());
        for (const QString& name :
             {u"ChkNormalPositive"_s, u"ChkNormalNegative"_s, u"ChkNormalYes"_s, u"ChkNormalNo"_s})
            box(name).setValue(false);
        SetResult(None);
    }

    void showFields(const Row* row) override {
        clearFields();
        if (!row)
            return;
        m_amount->setText(NumberText(row->real(u"Amount"_s)));
        SetResult(Result(std::clamp<qint64>(row->integer(u"ResultType"_s), None, Textual)));
        if (m_result == Numeric) {
            m_from->setText(NumberText(row->real(u"NormalNumFrom"_s)));
            m_to->setText(NumberText(row->real(u"NormalNumTo"_s)));
        }
        box(u"ChkNormalPositive"_s).setValue(row->integer(u"NormalPositive"_s) == 1);
        box(u"ChkNormalNegative"_s).setValue(row->integer(u"NormalPositive"_s) == 2);
        box(u"ChkNormalYes"_s).setValue(row->integer(u"NormalYes"_s) == 1);
        box(u"ChkNormalNo"_s).setValue(row->integer(u"NormalYes"_s) == 2);
        for (const Row& category :
             db().select(u"SELECT CategoryCode FROM InvtCatg WHERE InvestigationCode = ?"_s,
                         {row->integer(u"Code"_s)})) {
            const int at = m_categories->findCode(category.integer(u"CategoryCode"_s));
            if (at >= 0)
                m_categories->setTicked(at, true);
        }
    }

    bool validateFields() override {
        QString refusal;
        Control* focus = nullptr;
        if (static_cast<TextBox*>(control(u"TxtDescription"_s))->text().trimmed().isEmpty()) {
            refusal = u"Investigation Description Should Not be Blank."_s;
            focus = control(u"TxtDescription"_s);
        } else if (m_result == None) {
            refusal = u"Investigation Result Type Should Not be Blank."_s;
            focus = control(kResultBoxes.front());
        } else if (!NormalValuesValid()) {
            refusal = u"Invalid Investigation Normal Value(s)."_s;
            focus = m_result == Numeric ? m_from : control(kResultBoxes.front());
        }
        if (refusal.isEmpty())
            return true;
        prompter().stop(refusal);
        setFocus(*focus);
        return false;
    }

    void writeFields(std::vector<std::pair<QString, QVariant>>& columns) override {
        const bool numeric = m_result == Numeric;
        columns.emplace_back(u"Amount"_s, m_amount->text().trimmed().toDouble());
        columns.emplace_back(u"ResultType"_s, int(m_result));
        columns.emplace_back(u"NormalNumFrom"_s, numeric ? m_from->text().toDouble() : 0.0);
        columns.emplace_back(u"NormalNumTo"_s, numeric ? m_to->text().toDouble() : 0.0);
        columns.emplace_back(u"NormalPositive"_s, m_result != Positive                  ? 0
                                                  : box(u"ChkNormalPositive"_s).value() ? 1
                                                                                        : 2);
        columns.emplace_back(u"NormalYes"_s, m_result != YesNo ? 0 : box(u"ChkNormalYes"_s).value() ? 1 : 2);
    }

    // The categories of the investigation are written again with it.
    bool writeLinks(qint64 code) override {
        if (db().execute(u"DELETE FROM InvtCatg WHERE InvestigationCode = ?"_s, {code}) < 0)
            return false;
        for (const ListRow& row : m_categories->rows()) {
            if (row.ticked &&
                db().execute(u"INSERT INTO InvtCatg (InvestigationCode, CategoryCode) VALUES (?, ?)"_s,
                             {code, row.code}) < 0)
                return false;
        }
        return true;
    }

    bool deleteLinks(qint64 code) override {
        return db().execute(u"DELETE FROM InvtCatg WHERE InvestigationCode = ?"_s, {code}) >= 0;
    }

private:
    CheckBox& box(const QString& name) { return static_cast<CheckBox&>(*control(name)); }

    static QString NumberText(double value) { return QString::number(value, 'g', 12); }

    // Ticking one box of a pair clears the other.
    void Pair(const QString& first, const QString& second) {
        box(first).onClick = [this, first, second] {
            if (box(first).value())
                box(second).setValue(false);
        };
        box(second).onClick = [this, first, second] {
            if (box(second).value())
                box(first).setValue(false);
        };
    }

    // One kind of result at a time; the normal-value boxes of that kind open with it.
    void SetResult(Result result) {
        m_result = result;
        for (int i = 0; i < kResultBoxes.size(); ++i)
            box(kResultBoxes[i]).setValue(result == i + 1);
        const bool numeric = m_editing && result == Numeric;
        m_unit->setLocked(!(m_editing && result != Textual && result != None));
        m_from->setLocked(!numeric);
        m_to->setLocked(!numeric);
        m_from->setEnabled(numeric);
        m_to->setEnabled(numeric);
        for (const QString& name : {u"ChkNormalPositive"_s, u"ChkNormalNegative"_s})
            box(name).setEnabled(m_editing && result == Positive);
        for (const QString& name : {u"ChkNormalYes"_s, u"ChkNormalNo"_s})
            box(name).setEnabled(m_editing && result == YesNo);
    }

    bool NormalValuesValid() {
        switch (m_result) {
        case Numeric: {
            bool fromOk = false;
            bool toOk = false;
            const double from = m_from->text().trimmed().toDouble(&fromOk);
            const double to = m_to->text().trimmed().toDouble(&toOk);
            return fromOk && toOk && from <= to;
        }
        case Positive:
            return box(u"ChkNormalPositive"_s).value() || box(u"ChkNormalNegative"_s).value();
        case YesNo:
            return box(u"ChkNormalYes"_s).value() || box(u"ChkNormalNo"_s).value();
        default:
            return true;
        }
    }

    TextBox* m_amount = nullptr;
    TextBox* m_unit = nullptr;
    TextBox* m_from = nullptr;
    TextBox* m_to = nullptr;
    ListBox* m_categories = nullptr;
    Result m_result = None;
    bool m_editing = false;
};

VANTREL_SCREEN(Mst_Investigation);

} // namespace vantrel
