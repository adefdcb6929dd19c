#include "prescription/Safety.h"

#include "core/Screen.h"
#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

// Status codes of SafetyStatus.
enum Status { Safe = 1, Unsafe = 2, Uncertain = 3, Careful = 4, NotUsed = 5, NotKnown = 6 };

// The panel's rows, top to bottom, by the state each shows.
constexpr int PanelFields[7] = {3, 4, 1, 2, 6, 5, 7};
const char16_t* const PanelNames[7] = {u"Paediatrics",
                                       u"Elderly",
                                       u"Pregnancy",
                                       u"Lactation",
                                       u"Liver Insufficiency",
                                       u"Renal Insufficiency",
                                       u"Pulmonary Insufficiency"};

// "Un-Safe in All Drugs", "Un-Safe in One Drug", "Un-Safe in 2 Drugs"; empty for none.
QString CountText(const QString& word, int count, int total) {
    if (count <= 0)
        return {};
    if (count == total)
        return word + u" in All Drugs"_s;
    if (count == 1)
        return word + u" in One Drug"_s;
    return word + u" in "_s + QString::number(count) + u" Drugs"_s;
}

QString JoinTexts(const QString& first, const QString& second) {
    if (first.isEmpty())
        return second;
    return second.isEmpty() ? first : first + u" And "_s + second;
}

Tone ToneOf(SafetyClass cls) {
    switch (cls) {
    case SafetyClass::Safe:
        return Tone::Safe;
    case SafetyClass::Unsafe:
        return Tone::Unsafe;
    case SafetyClass::Uncertain:
        return Tone::Uncertain;
    case SafetyClass::Careful:
        return Tone::Careful;
    default:
        return Tone::None;
    }
}

} // namespace

BrandSafety ReadBrandSafety(Database& db, qint64 brand) {
    BrandSafety rows;
    for (const Row& row : db.select(u"SELECT A.SafeFieldCode, A.SafetyCode, COUNT(*) AS Cnt "
                                    "FROM DrugSafety A, GenericPharma B WHERE A.PharmaCode = B.PharmaCode "
                                    "AND B.GenericCode = ? GROUP BY A.SafeFieldCode, A.SafetyCode"_s,
                                    {brand}))
        rows.push_back({static_cast<int>(row.integer(u"SafeFieldCode"_s)),
                        static_cast<int>(row.integer(u"SafetyCode"_s)),
                        static_cast<int>(row.integer(u"Cnt"_s))});
    return rows;
}

SafetyVerdict ClassifyBrandSafety(const BrandSafety& rows, int field) {
    int counts[7] = {};
    int total = 0;
    for (const SafetyGroup& group : rows) {
        if (group.field == field && group.status >= Safe && group.status <= NotKnown) {
            counts[group.status] += group.count;
            total += group.count;
        }
    }
    // Any unsafe or unused drug makes the brand unsafe, whatever its other drugs are.
    if (counts[Unsafe] > 0 || counts[NotUsed] > 0)
        return {SafetyClass::Unsafe, u"Un-Safe"_s,
                JoinTexts(CountText(u"Un-Safe"_s, counts[Unsafe], total),
                          CountText(u"Not Used"_s, counts[NotUsed], total))};
    if (counts[Uncertain] > 0 || counts[NotKnown] > 0)
        return {SafetyClass::Uncertain, u"Un-Certain"_s,
                JoinTexts(CountText(u"Un-Certain"_s, counts[Uncertain], total),
                          CountText(u"Not Known"_s, counts[NotKnown], total))};
    if (counts[Careful] > 0)
        return {SafetyClass::Careful, u"Carefull"_s,
                CountText(u"Carefull Approach"_s, counts[Careful], total)};
    if (total > 0)
        return {SafetyClass::Safe, u"Safe"_s, {}};
    return {SafetyClass::None, u"Not Available"_s, {}};
}

SafetyClass SafetyClassOfCaption(const QString& caption) {
    if (caption == u"Safe"_s)
        return SafetyClass::Safe;
    if (caption == u"Un-Safe"_s)
        return SafetyClass::Unsafe;
    if (caption == u"Un-Certain"_s)
        return SafetyClass::Uncertain;
    if (caption == u"Carefull"_s)
        return SafetyClass::Careful;
    return SafetyClass::None;
}

int SafetyPanelRow(int field) {
    for (int row = 0; row < 7; ++row) {
        if (PanelFields[row] == field)
            return row;
    }
    return -1;
}

QString SafetyStateName(int field) {
    static const char16_t* const names[] = {
        u"",        u"Pregnancy",           u"Lactation",           u"Paediatrics",
        u"Elderly", u"Renal Insufficiency", u"Liver Insufficiency", u"Pulmonary Insufficiency"};
    return field >= 1 && field <= 7 ? QString::fromUtf16(names[field]) : QString();
}

SafetyPanel::SafetyPanel(Screen& screen) : m_screen(screen) {
    for (const QString& kind : {u"Brand"_s, u"Drug"_s}) {
        auto& title = screen.add<Label>(u"Lbl%1Title"_s.arg(kind));
        title.setTabStop(false);
        for (int row = 0; row < 7; ++row) {
            screen.add<Label>(u"Lbl%1Safe"_s.arg(kind), row).setCaption(QString::fromUtf16(PanelNames[row]));
            screen.add<Label>(u"Lbl%1Safe1"_s.arg(kind), row);
            auto& text = screen.add<TextBox>(u"Txt%1Safety"_s.arg(kind), row);
            text.setLocked(true);
            text.setTabStop(false);
        }
    }
    const QStringList legend{u"Safe"_s, u"Unsafe"_s, u"Uncertain"_s, u"Dose Adjestment"_s,
                             u"Carefull Approach"_s};
    const Tone tones[] = {Tone::Safe, Tone::Unsafe, Tone::Uncertain, Tone::Adjust, Tone::Careful};
    for (int i = 0; i < legend.size(); ++i) {
        auto& label = screen.add<Label>(u"LblLegend"_s, i);
        label.setCaption(legend.at(i));
        label.setTone(tones[i]);
    }
    auto& toDrug = screen.add<Label>(u"LblDrug"_s);
    toDrug.setCaption(u" Click to See Safety Parameters Drug wise "_s);
    toDrug.onClick = [this] {
        if (m_brand > 0)
            showDrugPanel(true);
    };
    auto& toBrand = screen.add<Label>(u"LblBrand"_s);
    toBrand.setCaption(u" Click to See Safety Parameters Brand wise "_s);
    toBrand.onClick = [this] { showDrugPanel(false); };
    auto& previous = screen.add<Button>(u"CmdPrevDrug"_s);
    previous.setCaption(u"<"_s);
    previous.setCausesValidation(false);
    previous.onClick = [this] { step(-1); };
    auto& next = screen.add<Button>(u"CmdNextDrug"_s);
    next.setCaption(u">"_s);
    next.setCausesValidation(false);
    next.onClick = [this] { step(1); };
    clear();
    showDrugPanel(false);
}

void SafetyPanel::clear() {
    for (const QString& kind : {u"Brand"_s, u"Drug"_s}) {
        for (int row = 0; row < 7; ++row) {
            auto* status = qobject_cast<Label*>(m_screen.control(u"Lbl%1Safe1"_s.arg(kind), row));
            status->setCaption({});
            status->setTone(Tone::None);
            qobject_cast<TextBox*>(m_screen.control(u"Txt%1Safety"_s.arg(kind), row))->setText({});
        }
    }
    m_screen.control(u"LblBrandTitle"_s)->setCaption(u" Safety Parameters of Selected Brand [Prescribed] "_s);
    m_screen.control(u"LblDrugTitle"_s)->setCaption(u" Safety Parameters of Selected Drug Name "_s);
    m_screen.control(u"CmdNextDrug"_s)->setEnabled(false);
    m_screen.control(u"CmdPrevDrug"_s)->setEnabled(false);
    m_brand = 0;
    m_drugs.clear();
    m_drug = -1;
}

void SafetyPanel::showBrand(qint64 brand, const QString& name) {
    clear();
    if (brand <= 0)
        return;
    m_brand = brand;
    const BrandSafety rows = ReadBrandSafety(m_screen.db(), brand);
    if (rows.empty())
        return;
    for (const Row& drug :
         m_screen.db().select(u"SELECT A.Code, A.Name FROM PharmaName A, GenericPharma B "
                              "WHERE A.Code = B.PharmaCode AND B.GenericCode = ? ORDER BY A.Name"_s,
                              {brand}))
        m_drugs.emplace_back(drug.integer(u"Code"_s), drug.text(u"Name"_s));
    m_screen.control(u"CmdNextDrug"_s)->setEnabled(m_drugs.size() > 1);
    m_screen.control(u"LblBrandTitle"_s)
        ->setCaption(u" Safety Parameters of Brand ["_s + name.trimmed().toUpper() + u"] "_s);
    for (int field = 1; field <= 7; ++field) {
        const SafetyVerdict verdict = ClassifyBrandSafety(rows, field);
        const int row = SafetyPanelRow(field);
        auto* status = qobject_cast<Label*>(m_screen.control(u"LblBrandSafe1"_s, row));
        status->setCaption(verdict.caption);
        status->setTone(ToneOf(verdict.cls));
        auto* text = qobject_cast<TextBox*>(m_screen.control(u"TxtBrandSafety"_s, row));
        text->setText(verdict.text);
        text->setCursor(0);
    }
    if (!m_drugs.empty()) {
        m_drug = 0;
        showDrug();
    }
}

void SafetyPanel::showSingleDrug(qint64 drug) {
    clear();
    const auto row =
        m_screen.db().first(u"SELECT A.Code, A.Name FROM PharmaName A WHERE A.Code = ?"_s, {drug});
    if (!row)
        return;
    m_drugs.emplace_back(row->integer(u"Code"_s), row->text(u"Name"_s));
    m_drug = 0;
    showDrug();
}

void SafetyPanel::showDrug() {
    if (m_drug < 0 || m_drug >= static_cast<int>(m_drugs.size()))
        return;
    const auto& [code, name] = m_drugs[static_cast<size_t>(m_drug)];
    m_screen.control(u"LblDrugTitle"_s)
        ->setCaption(u" Safety Parameters of Drug ["_s + name.toUpper() + u"] "_s);
    for (int row = 0; row < 7; ++row) {
        auto* status = qobject_cast<Label*>(m_screen.control(u"LblDrugSafe1"_s, row));
        status->setCaption({});
        status->setTone(Tone::None);
        qobject_cast<TextBox*>(m_screen.control(u"TxtDrugSafety"_s, row))->setText({});
    }
    static const QStringList words{
        {}, u"Safe"_s, u"Un-Safe"_s, u"Un-Certain"_s, u"Carefull"_s, u"Not Used"_s, u"Not Known"_s};
    static const Tone tones[] = {Tone::None,    Tone::Safe,   Tone::Unsafe,   Tone::Uncertain,
                                 Tone::Careful, Tone::Unsafe, Tone::Uncertain};
    for (const Row& row : m_screen.db().select(
             u"SELECT SafeFieldCode, SafetyCode, Remark FROM DrugSafety WHERE PharmaCode = ?"_s, {code})) {
        const int field = static_cast<int>(row.integer(u"SafeFieldCode"_s));
        const int status = static_cast<int>(row.integer(u"SafetyCode"_s));
        if (field < 1 || field > 7 || status < Safe || status > NotKnown)
            continue;
        const int panelRow = SafetyPanelRow(field);
        auto* label = qobject_cast<Label*>(m_screen.control(u"LblDrugSafe1"_s, panelRow));
        label->setCaption(words.at(status));
        label->setTone(tones[status]);
        QString remark = row.text(u"Remark"_s);
        remark.replace(u"\r\n"_s, u" "_s).replace(u'\n', u' ').replace(u'\r', u' ');
        auto* text = qobject_cast<TextBox*>(m_screen.control(u"TxtDrugSafety"_s, panelRow));
        text->setText(remark);
        text->setCursor(0);
    }
    m_screen.control(u"CmdPrevDrug"_s)->setEnabled(m_drug > 0);
    m_screen.control(u"CmdNextDrug"_s)->setEnabled(m_drug + 1 < static_cast<int>(m_drugs.size()));
}

void SafetyPanel::step(int by) {
    const int target = m_drug + by;
    if (target < 0 || target >= static_cast<int>(m_drugs.size()))
        return;
    m_drug = target;
    showDrug();
}

void SafetyPanel::showDrugPanel(bool on) {
    for (const QString& kind : {u"Brand"_s, u"Drug"_s}) {
        const bool shown = (kind == u"Drug"_s) == on;
        m_screen.control(u"Lbl%1Title"_s.arg(kind))->setVisible(shown);
        for (int row = 0; row < 7; ++row) {
            m_screen.control(u"Lbl%1Safe"_s.arg(kind), row)->setVisible(shown);
            m_screen.control(u"Lbl%1Safe1"_s.arg(kind), row)->setVisible(shown);
            m_screen.control(u"Txt%1Safety"_s.arg(kind), row)->setVisible(shown);
        }
    }
    m_screen.control(u"LblDrug"_s)->setVisible(!on);
    m_screen.control(u"LblBrand"_s)->setVisible(on);
    m_screen.control(u"CmdPrevDrug"_s)->setVisible(on);
    m_screen.control(u"CmdNextDrug"_s)->setVisible(on);
}

SafetyClass SafetyPanel::shownClass(int field) const {
    const int row = SafetyPanelRow(field);
    return row < 0 ? SafetyClass::None
                   : SafetyClassOfCaption(m_screen.control(u"LblBrandSafe1"_s, row)->caption());
}

} // namespace vantrel
