#include "prescription/BrandCheck.h"

#include "core/Lookup.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "core/Screen.h"
#include "prescription/Safety.h"

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

Database& Db(const BrandCheckContext& c) {
    return c.screen->db();
}

Prompter& Ask(const BrandCheckContext& c) {
    return c.screen->prompter();
}

bool Switch(const BrandCheckContext& c, const QString& column) {
    return c.screen->state().Params.flag(column);
}

bool HasRows(const BrandCheckContext& c, const QString& table) {
    return !table.isEmpty() && Db(c).exists(u"SELECT 1 FROM \"%1\""_s.arg(table));
}

// The comment of an allergy or a disease link, and the blank lines that end its paragraph.
QString Comments(const QString& notes) {
    const QString trimmed = notes.trimmed();
    return (trimmed.isEmpty() ? QString() : u"Comments - \n"_s + trimmed) + u"\n\n"_s;
}

} // namespace

bool CheckBrandLine(const BrandCheckContext& context, qint64 brand, qint64 form, bool freshQuery,
                    qint64 oldBrand) {
    if (brand < 1 || form < 1)
        return false;
    if (Db(context).exists(
            u"SELECT 1 FROM \"%1\" WHERE Code = ? AND DsgFmCode = ? AND rowid <> ?"_s.arg(context.lines),
            {brand, form, context.lineRowId})) {
        Ask(context).stop(u"Brand Already Prescribed."_s);
        return false;
    }
    if (Switch(context, u"ChkSafety"_s) && !CheckBrandSafety(context, brand, !freshQuery))
        return false;
    if (Switch(context, u"ChkSubstitute"_s) && !CheckSubstitute(context, brand, oldBrand))
        return false;
    if (Switch(context, u"ChkInteraction"_s) && !CheckInteraction(context, brand, oldBrand))
        return false;
    if (Switch(context, u"ChkDrug"_s) && !CheckDrugPresent(context, brand, oldBrand))
        return false;
    if (HasRows(context, context.allergies) && !CheckAllergy(context, brand))
        return false;
    if (HasRows(context, context.diseases) && !CheckContraIndication(context, brand))
        return false;
    return true;
}

bool CheckBrandSafety(const BrandCheckContext& context, qint64 brand, bool fromPanel) {
    if (brand < 1)
        return true;
    bool anyState = false;
    for (int field = 1; field <= 7; ++field)
        anyState = anyState || context.states.at(field);
    const QString name = BrandName(Db(context), brand).trimmed().toUpper();
    if (!anyState || name.isEmpty())
        return true;
    BrandSafety rows;
    if (!fromPanel || !context.panel) {
        rows = ReadBrandSafety(Db(context), brand);
        if (rows.empty())
            return true;
    }
    for (int field = 1; field <= 7; ++field) {
        if (!context.states.at(field))
            continue;
        const SafetyClass cls =
            rows.empty() ? context.panel->shownClass(field) : ClassifyBrandSafety(rows, field).cls;
        const QString state = SafetyStateName(field);
        QString question;
        if (cls == SafetyClass::Unsafe)
            question = name + u" is 'Un-Safe' in "_s + state + u". Want to Continue ?"_s;
        else if (cls == SafetyClass::Uncertain)
            question = name + u" is having 'Un-Certain' behavior in "_s + state + u". Want to Continue ?"_s;
        else if (cls == SafetyClass::Careful)
            question =
                name + u" is Indicated Under 'Carefull Approach' in "_s + state + u". Want to Continue ?"_s;
        if (!question.isEmpty() && !Ask(context).ask(question))
            return false;
    }
    return true;
}

bool CheckSubstitute(const BrandCheckContext& context, qint64 brand, qint64 oldBrand) {
    // A line whose drugs are exactly the brand's drugs: all of them found, and no other.
    const auto found = Db(context).first(
        u"SELECT A.Code, A.Name FROM \"%1\" AS A, GenericPharma AS B WHERE A.Code = B.GenericCode "
        "AND A.Code <> ? AND A.Code <> ? "
        "AND B.PharmaCode IN (SELECT PharmaCode FROM GenericPharma WHERE GenericCode = ?) "
        "GROUP BY A.Code, A.Name "
        "HAVING COUNT(*) = (SELECT COUNT(*) FROM GenericPharma WHERE GenericCode = ?) "
        "AND COUNT(*) = (SELECT COUNT(*) FROM GenericPharma WHERE GenericCode = A.Code)"_s.arg(context.lines),
        {brand, oldBrand, brand, brand});
    if (!found)
        return true;
    return Ask(context).ask(u"A Substitute ("_s + found->text(u"Name"_s).trimmed() + u") Of "_s +
                            BrandName(Db(context), brand) + u" is Already Prescribed. Want to Proceed ?"_s);
}

bool CheckInteraction(const BrandCheckContext& context, qint64 brand, qint64 oldBrand) {
    // The lines stand on the first side of each pair, the new brand on the second; pairs are stored both
    // ways.
    const bool found = Db(context).exists(
        u"SELECT C.Name FROM GenericPharma A, Interaction B, GenericName C "
        "WHERE A.GenericCode IN (SELECT Code FROM \"%1\" WHERE Code <> ? AND Code <> ?) "
        "AND A.PharmaCode = B.PharmaCode AND A.GenericCode = C.Code "
        "AND B.PharmaCodeInt IN (SELECT PharmaCode FROM GenericPharma WHERE GenericCode = ?)"_s.arg(
            context.lines),
        {brand, oldBrand, brand});
    if (!found)
        return true;
    bool refused = true;
    if (context.setBusy)
        context.setBusy(true);
    context.screen->process().openModal(
        u"FrmIntDetails"_s,
        [&](Screen& dialog) {
            dialog.inputs.insert(u"Source"_s, context.interactionSource);
            dialog.inputs.insert(u"ShowAll"_s, false);
            dialog.inputs.insert(u"GetBrandCode"_s, brand);
        },
        [&](Screen& dialog) { refused = dialog.outputs.value(u"ChkInteraction"_s, true).toBool(); });
    if (context.setBusy)
        context.setBusy(false);
    return !refused;
}

bool CheckDrugPresent(const BrandCheckContext& context, qint64 brand, qint64 oldBrand) {
    const Rows rows = Db(context).select(
        u"SELECT A.Name, C.Name AS PharmaName FROM \"%1\" AS A, GenericPharma AS B, PharmaName AS C "
        "WHERE A.Code = B.GenericCode AND B.PharmaCode = C.Code AND A.Code <> ? AND A.Code <> ? "
        "AND B.PharmaCode IN (SELECT PharmaCode FROM GenericPharma WHERE GenericCode = ?)"_s.arg(
            context.lines),
        {brand, oldBrand, brand});
    if (rows.empty())
        return true;
    QString text = u"Following Are the Drugs Aleady Exist in the Prescribed Brand(s)"_s;
    for (const Row& row : rows)
        text += u"\n"_s + row.text(u"PharmaName"_s).trimmed() + u" - In - "_s + row.text(u"Name"_s).trimmed();
    return Ask(context).ask(text + u"\n\nWant to Proceed ?"_s);
}

bool CheckAllergy(const BrandCheckContext& context, qint64 brand) {
    QString text;
    for (const Row& row : Db(context).select(
             u"SELECT A.AllergyName, A.AgeName, A.Notes, C.Name AS BrandName "
             "FROM \"%1\" A, GenericPharma B, GenericName C WHERE A.AllergyType = 'D' "
             "AND A.AllergyCode = B.PharmaCode AND B.GenericCode = C.Code AND C.Code = ?"_s.arg(
                 context.allergies),
             {brand})) {
        text += u"Patient is Allergic to Drug - '"_s + row.text(u"AllergyName"_s) + u"' In Brand '"_s +
                row.text(u"BrandName"_s) + u"' Since "_s + row.text(u"AgeName"_s) + u"."_s +
                Comments(row.text(u"Notes"_s));
    }
    for (const Row& row : Db(context).select(
             u"SELECT A.AllergyName, A.AgeName, A.Notes, C.Name AS DrugName, E.Name AS BrandName "
             "FROM \"%1\" A, PharmaGroup B, PharmaName C, GenericPharma D, GenericName E "
             "WHERE A.AllergyType = 'G' AND A.AllergyCode = B.DrugGroup AND B.PharmaCode = C.Code "
             "AND C.Code = D.PharmaCode AND D.GenericCode = E.Code AND E.Code = ?"_s.arg(context.allergies),
             {brand})) {
        text += u"Patient is Allergic to Drug Group - '"_s + row.text(u"AllergyName"_s) + u"' Since "_s +
                row.text(u"AgeName"_s) + u".\nDrug '"_s + row.text(u"DrugName"_s) + u"' In Brand '"_s +
                row.text(u"BrandName"_s) + u"' Belongs to Same Drug Group."_s +
                Comments(row.text(u"Notes"_s));
    }
    return text.isEmpty() || Ask(context).ask(text + u"Want to Proceed ?"_s);
}

bool CheckContraIndication(const BrandCheckContext& context, qint64 brand) {
    QString text;
    for (const Row& row : Db(context).select(
             u"SELECT A.DiseaseName, B.Notes, C.Name AS PharmaName, E.Name AS BrandName "
             "FROM \"%1\" A, DiseaseDrug B, PharmaName C, GenericPharma D, GenericName E "
             "WHERE A.DiseaseCode = B.DiseasesCode AND B.DrugCode = C.Code AND C.Code = D.PharmaCode "
             "AND D.GenericCode = E.Code AND E.Code = ?"_s.arg(context.diseases),
             {brand})) {
        text += u"Drug '"_s + row.text(u"PharmaName"_s) + u"' In Brand '"_s + row.text(u"BrandName"_s) +
                u"' is Contra-Indicated / Not Recommended in Disease '"_s + row.text(u"DiseaseName"_s) +
                u"'."_s + Comments(row.text(u"Notes"_s));
    }
    return text.isEmpty() || Ask(context).ask(text + u"Want to Proceed ?"_s);
}

} // namespace vantrel
