#include "prescription/BrandList.h"

#include "core/Startup.h"

using namespace Qt::StringLiterals;

namespace vantrel {

Statement BrandListStatement(const BrandFilters& filters) {
    Statement s;
    s.sql = u"SELECT DISTINCT A.Code, A.Name, A.Dosage, D.Remark, "
            "CASE WHEN D.Remark <> '' THEN D.Remark ELSE A.Dosage END AS m_Dosage, "
            "B.Code AS DsgFmCode, B.Name AS DsgFmName, C.Name AS Company "
            "FROM GenericName A, DosageForm B, Manufacturer C, GenericDsgFm D"_s;
    const bool drug = filters.drug > 0;
    const bool group = filters.group > 0;
    const bool indication = filters.indication > 0;
    if (drug || indication)
        s.sql += u", GenericPharma E"_s;
    if (group)
        s.sql += u", GenericGroup F"_s;
    if (indication)
        s.sql += u", PharmaIndication G"_s;
    s.sql += u" WHERE A.Code = D.GenericCode AND D.DsgFmCode = B.Code AND A.Company = C.Code"_s;
    if (drug) {
        s.sql += u" AND A.Code = E.GenericCode AND E.PharmaCode = ?"_s;
        s.params.append(filters.drug);
    }
    if (group) {
        s.sql += u" AND A.Code = F.GenericCode AND F.GroupCode = ?"_s;
        s.params.append(filters.group);
    }
    if (indication) {
        // Without a drug filter the indication reaches the brand through any of its drugs.
        if (!drug)
            s.sql +=
                u" AND A.Code = E.GenericCode AND E.PharmaCode = G.PharmaCode"_s
                " AND G.PharmaCode IN (SELECT PharmaCode FROM GenericPharma WHERE GenericCode = E.GenericCode)"_s;
        s.sql += u" AND G.IndicationCode = ?"_s;
        s.params.append(filters.indication);
    }
    if (filters.company > 0) {
        s.sql += u" AND C.Code = ?"_s;
        s.params.append(filters.company);
    }
    s.sql += u" ORDER BY A.Name"_s;
    return s;
}

QString BrandSearchText(const BrandFilterNames& names) {
    if (names.drug.isEmpty() && names.indication.isEmpty() && names.group.isEmpty() &&
        names.company.isEmpty())
        return u"Brands  Popup  List  will  now  Display  List  of  Brands  with  All Drugs,  For All Drug "
               "Indications  Belonging to Any Group or Any Manufacturer."_s;
    QString text = u"Brand List will now Display List of Brands "_s;
    if (!names.drug.isEmpty())
        text += u"having '"_s + ProperCase(names.drug) + u"' in Formulation"_s;
    else
        text += u"with All Drugs"_s;
    if (!names.indication.isEmpty())
        text += u" And '"_s + ProperCase(names.indication) + u"' As Drug Indication"_s;
    else
        text += (names.drug.isEmpty() ? u" And "_s : u", "_s) + u"For All Drug Indications"_s;
    if (!names.group.isEmpty())
        text += u" And Belonging to '"_s + ProperCase(names.group) + u"' Group"_s;
    else
        text += u" And Belonging to Any Group"_s;
    if (!names.company.isEmpty())
        text += u" And Manufactured By '"_s + ProperCase(names.company) + u"'."_s;
    else
        text += u" And Manufactured By Any Manufacturer."_s;
    return text;
}

} // namespace vantrel
