#include "core/KeyFilters.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "masters/MasterScreen.h"

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

MasterDefinition DiseaseDefinition() {
    MasterDefinition d =
        StandardMaster(u"Mst_Disease"_s, u"Disease"_s, u"DISEASE"_s, u"Disease"_s,
                       u"SELECT * FROM Disease ORDER BY Name, Code"_s, u"List of All Avaliable Diseases"_s,
                       u"Locate a Specified Disease"_s, u"   [Diseases Master]"_s);
    d.locator = u"SELECT Code, Name FROM Disease ORDER BY Name, Code"_s;
    d.colours = u"MstDet"_s;
    NameMessages(d, u"Disease Name"_s, u"Duplicate Disease."_s);
    return d;
}

// Entries of the first list that are not categories or profiles.
constexpr qint64 kGeneral = -1;
constexpr qint64 kAll = -2;

const QStringList kSexes = {u"M"_s, u"F"_s, u"B"_s};

} // namespace

// The diseases a clinic diagnoses, with their kind, notes and the investigations advised for them.
class Mst_Disease : public MasterScreen {
public:
    explicit Mst_Disease(Process& owner) : MasterScreen(owner, DiseaseDefinition()) {
        form = u"Mst_Disease"_s;
        addTextField(u"TxtDetail1"_s, u"Detail1"_s).setCaption(u"Differential Diagnosis / Causes"_s);
        addTextField(u"TxtDetail2"_s, u"Detail2"_s).setCaption(u"Other Investigations / Interpretation"_s);
        addTextField(u"TxtTypeNotes"_s, u"TypeNotes"_s);
        // The safety parameter the disease concerns, or none: chosen from the list only.
        addComboField(
            u"CmbCategory"_s, u"DiseaseCategory"_s,
            u"SELECT 0 AS Code, '' AS Name UNION ALL SELECT Code, Name FROM SafetyPara ORDER BY Code"_s, {})
            .editable = false;
        addTextField(u"TxtNotes"_s, u"Notes"_s).setMultiLine(true);
        for (const auto& [name, column] : {std::pair{u"Chk_Familial"_s, u"Familial"_s},
                                           {u"Chk_Congenital"_s, u"Congenital"_s},
                                           {u"Chk_Communicable"_s, u"Communicable"_s},
                                           {u"Chk_LifeStyle"_s, u"LifeStyle"_s},
                                           {u"Chk_Genetic"_s, u"Genetic"_s}})
            addFlagField(name, column).setCaption(column);
        const QStringList sexCaptions = {u"Male"_s, u"Female"_s, u"Both"_s};
        for (int i = 0; i < kSexes.size(); ++i) {
            auto& option = add<OptionButton>(u"OptSex"_s, i);
            option.group = u"Sex"_s;
            option.setCaption(sexCaptions[i]);
        }

        m_sourceCaption = &add<Label>(u"LblSource"_s);
        m_sources = &add<ListBox>(u"LstSource"_s);
        m_sources->checkBoxes = true;
        m_sources->onKeyDown = [this](Key key) {
            if (key != Key::F2)
                return false;
            m_profiles = !m_profiles;
            FillSources();
            FillAvailable();
            return true;
        };
        m_sources->onClick = [this] { FillAvailable(); };
        m_available = &add<ListBox>(u"LstAvailable"_s);
        m_search = &add<TextBox>(u"Txt_Search"_s);
        m_search->keyFilter = KeyName;
        m_search->onChange = [this] { SearchList(*m_available, m_search->text()); };
        m_chosen = &add<ListBox>(u"LstInvestigation"_s);
        auto& choose = add<Button>(u"Cmd_Add"_s);
        choose.setCaption(u">"_s);
        choose.onClick = [this] { Choose(); };
        auto& remove = add<Button>(u"Cmd_Remove"_s);
        remove.setCaption(u"<"_s);
        remove.onClick = [this] { Remove(); };
    }

protected:
    void lockFields(bool editing) override {
        for (Control* c : array(u"OptSex"_s))
            c->setEnabled(editing);
        for (const QString& name : {u"LstSource"_s, u"LstAvailable"_s, u"Txt_Search"_s, u"LstInvestigation"_s,
                                    u"Cmd_Add"_s, u"Cmd_Remove"_s})
            control(name)->setEnabled(editing);
        // Each edit starts with nothing ticked and nothing offered.
        FillSources();
        m_available->clear();
        m_search->setText(QString());
    }

    void clearFields() override {
        SetSex(u"B"_s);
        m_chosen->clear();
    }

    void showFields(const Row* row) override {
        SetSex(row ? row->text(u"DiseaseSex"_s) : u"B"_s);
        std::vector<ListRow> chosen;
        if (row) {
            for (const Row& r : db().select(u"SELECT A.Code, A.Name FROM Investigation A, InvDiseases B "
                                            "WHERE A.Code = B.InvestigationCode AND B.DiseasesCode = ? "
                                            "ORDER BY A.Name, A.Code"_s,
                                            {row->integer(u"Code"_s)}))
                chosen.push_back({r.integer(u"Code"_s), {r.text(u"Name"_s)}, false});
        }
        m_chosen->setRows(std::move(chosen));
    }

    void writeFields(std::vector<std::pair<QString, QVariant>>& columns) override {
        QString sex = u"B"_s;
        for (Control* c : array(u"OptSex"_s)) {
            if (static_cast<OptionButton*>(c)->value())
                sex = kSexes[c->index()];
        }
        columns.emplace_back(u"DiseaseSex"_s, sex);
    }

    // The advised investigations are written again with the disease.
    bool writeLinks(qint64 code) override {
        if (db().execute(u"DELETE FROM InvDiseases WHERE DiseasesCode = ?"_s, {code}) < 0)
            return false;
        for (const ListRow& row : m_chosen->rows()) {
            if (db().execute(u"INSERT INTO InvDiseases (DiseasesCode, InvestigationCode) VALUES (?, ?)"_s,
                             {code, row.code}) < 0)
                return false;
        }
        return true;
    }

    // A disease's links go with it.
    bool deleteLinks(qint64 code) override {
        for (const QString& sql : {u"DELETE FROM InvDiseases WHERE DiseasesCode = ?"_s,
                                   u"DELETE FROM DiseaseDrug WHERE DiseasesCode = ?"_s,
                                   u"DELETE FROM DiseaseSafety WHERE DiseasesCode = ?"_s,
                                   u"DELETE FROM DiseaseInv WHERE DiseasesCode = ?"_s,
                                   u"DELETE FROM DiseaseRelated WHERE DiseasesCode = ?"_s,
                                   u"DELETE FROM DiseaseCombi WHERE DiseasesCode = ?"_s,
                                   u"DELETE FROM DiseaseCombi WHERE Diseases1Code = ?"_s}) {
            if (db().execute(sql, {code}) < 0)
                return false;
        }
        return true;
    }

private:
    void SetSex(const QString& sex) {
        const qsizetype at = kSexes.indexOf(sex.trimmed().toUpper());
        static_cast<OptionButton*>(control(u"OptSex"_s, at < 0 ? 2 : int(at)))->setValue(true);
    }

    // Categories or profiles, then the general and the complete list.
    void FillSources() {
        m_sourceCaption->setCaption(m_profiles ? u"Investigation Profiles [ F2 For Categories ]"_s
                                               : u"Investigation Categories [ F2 For Profiles ]"_s);
        std::vector<ListRow> rows;
        for (const Row& row :
             db().select(m_profiles ? u"SELECT Code, Name FROM InvProfiles ORDER BY Name, Code"_s
                                    : u"SELECT Code, Name FROM InvCategory ORDER BY Name, Code"_s))
            rows.push_back({row.integer(u"Code"_s), {row.text(u"Name"_s)}, false});
        rows.push_back({kGeneral, {u"GENERAL INVESTIGATIONS"_s}, false});
        rows.push_back({kAll, {u"ALL INVESTIGATIONS"_s}, false});
        m_sources->setRows(std::move(rows));
    }

    // The investigations of the ticked categories or profiles. The general ones, when asked for, come with
    // them as far as they stand in some category (or profile) themselves.
    void FillAvailable() {
        QVariantList codes;
        bool general = false;
        bool all = false;
        for (const ListRow& row : m_sources->rows()) {
            if (!row.ticked)
                continue;
            const qint64 code = row.code.toLongLong();
            general = general || code == kGeneral;
            all = all || code == kAll;
            if (code > 0)
                codes << code;
        }
        QString sql;
        if (all) {
            sql = u"SELECT Code, Name FROM Investigation ORDER BY Name, Code"_s;
            codes.clear();
        } else if (!codes.isEmpty() || general) {
            QStringList marks;
            for (int i = 0; i < codes.size(); ++i)
                marks << u"?"_s;
            sql = u"SELECT DISTINCT A.Code, A.Name FROM Investigation A, %1 B WHERE A.Code = "
                  u"B.InvestigationCode "
                  "AND (B.%2 IN (%3)%4) ORDER BY A.Name, A.Code"_s.arg(
                      m_profiles ? u"InvtProfiles"_s : u"InvtCatg"_s,
                      m_profiles ? u"ProfileCode"_s : u"CategoryCode"_s, marks.join(u", "_s),
                      general ? u" OR A.General <> 0"_s : QString());
        }
        std::vector<ListRow> rows;
        if (!sql.isEmpty()) {
            for (const Row& row : db().select(sql, codes))
                rows.push_back({row.integer(u"Code"_s), {row.text(u"Name"_s)}, false});
        }
        m_available->setRows(std::move(rows));
    }

    void Choose() {
        const QVariant code = m_available->currentCode();
        if (!code.isValid() || m_chosen->findCode(code) >= 0)
            return;
        std::vector<ListRow> rows = m_chosen->rows();
        rows.push_back(m_available->rows().at(m_available->current()));
        std::sort(rows.begin(), rows.end(),
                  [](const ListRow& a, const ListRow& b) { return a.columns.value(0) < b.columns.value(0); });
        m_chosen->setRows(std::move(rows));
    }

    void Remove() {
        const int at = m_chosen->current();
        if (at < 0)
            return;
        std::vector<ListRow> rows = m_chosen->rows();
        rows.erase(rows.begin() + at);
        m_chosen->setRows(std::move(rows));
    }

    bool m_profiles = false;
    Label* m_sourceCaption = nullptr;
    ListBox* m_sources = nullptr;
    ListBox* m_available = nullptr;
    TextBox* m_search = nullptr;
    ListBox* m_chosen = nullptr;
};

VANTREL_SCREEN(Mst_Disease);

} // namespace vantrel
