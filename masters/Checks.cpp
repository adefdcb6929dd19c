#include "masters/Checks.h"

#include "core/Process.h"

#include <map>

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

// Which tables refer to a code of each master. Every "?" stands for the code.
const std::map<QString, QString>& InUseStatements() {
    static const std::map<QString, QString> statements = {
        {u"ALLERGY"_s,
         u"SELECT AllergyCode FROM PatientAllergy WHERE AllergyType = 'A' AND AllergyCode = ? "
         "UNION SELECT AllergyCode FROM PresAllergy WHERE AllergyType = 'A' AND AllergyCode = ? "
         "UNION SELECT AllergyCode FROM VisitAllergy WHERE AllergyType = 'A' AND AllergyCode = ?"_s},
        {u"ALLERGYTYPE"_s, u"SELECT AllergyType FROM Allergies WHERE AllergyType = ?"_s},
        {u"BRAND"_s, u"SELECT GenericCode FROM PresDet WHERE GenericCode = ? "
                     "UNION SELECT GenericCode FROM ReadyDet WHERE GenericCode = ?"_s},
        {u"CITY"_s,
         u"SELECT City FROM Patient WHERE City = ? UNION SELECT City FROM Prescriber WHERE City = ? "
         "UNION SELECT City FROM Control WHERE City = ? OR City1 = ? OR City2 = ?"_s},
        {u"COMPANY"_s, u"SELECT Company FROM GenericName WHERE Company = ?"_s},
        {u"COMPLAINT"_s, u"SELECT ComplaintCode FROM PresComplaint WHERE ComplaintCode = ? "
                         "UNION SELECT ComplaintCode FROM ReadyComplaint WHERE ComplaintCode = ? "
                         "UNION SELECT ComplaintCode FROM VisitComplaint WHERE ComplaintCode = ?"_s},
        {u"CONTRA"_s,
         u"SELECT ContraIndicationCode FROM PharmaContra WHERE ContraIndicationCode = ? "
         "UNION SELECT ContraCode AS ContraIndicationCode FROM VacContra WHERE ContraCode = ?"_s},
        {u"DEPARTMENT"_s, u"SELECT Department FROM Control WHERE Department = ? "
                          "UNION SELECT Department FROM Prescriber WHERE Department = ?"_s},
        {u"DISEASE"_s,
         u"SELECT DiseaseCode AS DiseasesCode FROM PresDisease WHERE DiseaseCode = ? "
         "UNION SELECT DiseaseCode AS DiseasesCode FROM ReadyDisease WHERE DiseaseCode = ? "
         "UNION SELECT DiseasesCode FROM PatientFamily WHERE DiseasesCode = ? "
         "UNION SELECT PastCode AS DiseasesCode FROM PatientPast WHERE PastType = 'D' AND PastCode = ? "
         "UNION SELECT DiseasesCode FROM PresFamily WHERE DiseasesCode = ? "
         "UNION SELECT PastCode AS DiseasesCode FROM PresPast WHERE PastType = 'D' AND PastCode = ? "
         "UNION SELECT DiseasesCode FROM VisitFamily WHERE DiseasesCode = ? "
         "UNION SELECT PastCode AS DiseasesCode FROM VisitPast WHERE PastType = 'D' AND PastCode = ?"_s},
        {u"DOCTOR"_s, u"SELECT PrescriberCode FROM OPDCard WHERE PrescriberCode = ? "
                      "UNION SELECT PrescriberCode FROM RefBy WHERE PrescriberCode = ? "
                      "UNION SELECT PrescriberCode FROM DailyTask WHERE PrescriberCode = ? "
                      "UNION SELECT PrescriberCode FROM MonthlyTask WHERE PrescriberCode = ?"_s},
        {u"DOSAGEFORM"_s, u"SELECT DsgFmCode FROM GenericDsgFm WHERE DsgFmCode = ? "
                          "UNION SELECT DsgFmCode FROM PresDet WHERE DsgFmCode = ? "
                          "UNION SELECT DsgFmCode FROM ReadyDet WHERE DsgFmCode = ?"_s},
        {u"DOSE"_s, u"SELECT DoseCode FROM VacDose WHERE DoseCode = ? "
                    "UNION SELECT DoseCode FROM ImmDetail WHERE DoseCode = ?"_s},
        {u"DRUGGROUP"_s,
         u"SELECT DrugGroup FROM PharmaGroup WHERE DrugGroup = ? "
         "UNION SELECT AllergyCode AS DrugGroup FROM PatientAllergy WHERE AllergyType = 'G' AND AllergyCode "
         "= ? "
         "UNION SELECT AllergyCode AS DrugGroup FROM PresAllergy WHERE AllergyType = 'G' AND AllergyCode = ? "
         "UNION SELECT AllergyCode AS DrugGroup FROM VisitAllergy WHERE AllergyType = 'G' AND AllergyCode = ?"_s},
        {u"DSGREMARK"_s, u"SELECT DsgRemarkCode FROM PresDet WHERE DsgRemarkCode = ? "
                         "UNION SELECT DsgRemarkCode FROM ReadyDet WHERE DsgRemarkCode = ?"_s},
        {u"EMPLOYER"_s, u"SELECT Company FROM Patient WHERE Company = ? "
                        "UNION SELECT CompanyCode AS Company FROM Control WHERE CompanyCode = ?"_s},
        {u"GROUP"_s, u"SELECT GroupCode FROM GenericGroup WHERE GroupCode = ? "
                     "UNION SELECT GroupCode FROM SubGroup WHERE GroupCode = ?"_s},
        {u"INDICATION"_s, u"SELECT IndicationCode FROM PharmaIndication WHERE IndicationCode = ?"_s},
        {u"INTERACTION"_s, u"SELECT IntTypeCode FROM Interaction WHERE IntTypeCode = ?"_s},
        {u"INVCATEGORY"_s, u"SELECT CategoryCode FROM InvtCatg WHERE CategoryCode = ?"_s},
        {u"INVESTIGATION"_s,
         u"SELECT InvestigationCode FROM InvDiseases WHERE InvestigationCode = ? "
         "UNION SELECT InvestigationCode FROM PatientInvestigation WHERE InvestigationCode = ? "
         "UNION SELECT InvCode AS InvestigationCode FROM PrintInv WHERE InvCode = ? "
         "UNION SELECT InvCode AS InvestigationCode FROM InvTemplate WHERE InvCode = ? "
         "UNION SELECT InvestigationCode FROM PresAdvised WHERE InvestigationCode = ? "
         "UNION SELECT InvestigationCode FROM ReadyAdvised WHERE InvestigationCode = ? "
         "UNION SELECT InvestigationCode FROM InvtProfiles WHERE InvestigationCode = ?"_s},
        {u"OCCUPATION"_s, u"SELECT Occupation FROM Patient WHERE Occupation = ?"_s},
        {u"PATIENT"_s, u"SELECT PatientCode FROM OPDCard WHERE PatientCode = ? "
                       "UNION SELECT PatientCode FROM PresHead WHERE PatientCode = ? "
                       "UNION SELECT Patient AS PatientCode FROM PrintInv WHERE Patient = ? "
                       "UNION SELECT Patient AS PatientCode FROM Receipt WHERE Patient = ? "
                       "UNION SELECT PatientCode FROM Immunization WHERE PatientCode = ?"_s},
        {u"PERSONAL"_s, u"SELECT PersonalCode FROM PatientPersonal WHERE PersonalCode = ? "
                        "UNION SELECT PersonalCode FROM PresPersonal WHERE PersonalCode = ? "
                        "UNION SELECT PersonalCode FROM VisitPersonal WHERE PersonalCode = ?"_s},
        {u"PHARMA"_s,
         u"SELECT PharmaCode FROM GenericPharma WHERE PharmaCode = ? "
         "UNION SELECT DrugCode AS PharmaCode FROM DiseaseDrug WHERE DrugCode = ? "
         "UNION SELECT AllergyCode AS PharmaCode FROM PatientAllergy WHERE AllergyType = 'D' AND AllergyCode "
         "= ? "
         "UNION SELECT AllergyCode AS PharmaCode FROM PresAllergy WHERE AllergyType = 'D' AND AllergyCode = "
         "? "
         "UNION SELECT AllergyCode AS PharmaCode FROM VisitAllergy WHERE AllergyType = 'D' AND AllergyCode = ?"_s},
        {u"PHYSICAL"_s, u"SELECT PhysicalCode FROM PatientPhysical WHERE PhysicalCode = ? "
                        "UNION SELECT PhysicalCode FROM PresPhysical WHERE PhysicalCode = ? "
                        "UNION SELECT PhysicalCode FROM VisitPhysical WHERE PhysicalCode = ?"_s},
        {u"PROFILE"_s, u"SELECT ProfileCode FROM InvtProfiles WHERE ProfileCode = ?"_s},
        {u"RELATION"_s, u"SELECT HofRelation AS RelationCode FROM Patient WHERE HofRelation = ? "
                        "UNION SELECT RelationCode FROM PatientFamily WHERE RelationCode = ? "
                        "UNION SELECT RelationCode FROM PresFamily WHERE RelationCode = ? "
                        "UNION SELECT RelationCode FROM VisitFamily WHERE RelationCode = ?"_s},
        {u"SERIES"_s, u"SELECT SeriesCode FROM Receipt WHERE SeriesCode = ?"_s},
        {u"SIDE"_s, u"SELECT SideEffectCode FROM PharmaSide WHERE SideEffectCode = ?"_s},
        {u"SPECIAL"_s, u"SELECT SpecialCode FROM PharmaSpecial WHERE SpecialCode = ?"_s},
        {u"SPONSOR"_s, u"SELECT Payer FROM Patient WHERE Payer = ?"_s},
        {u"SUBALLERGY"_s,
         u"SELECT SubCode AS AllergyCode FROM AllergyDet WHERE SubCode = ? "
         "UNION SELECT AllergyCode FROM PatientAllergy WHERE AllergyType = 'B' AND AllergyCode = ? "
         "UNION SELECT AllergyCode FROM PresAllergy WHERE AllergyType = 'B' AND AllergyCode = ? "
         "UNION SELECT AllergyCode FROM VisitAllergy WHERE AllergyType = 'B' AND AllergyCode = ?"_s},
        {u"SUBGROUP"_s, u"SELECT SubGroupCode FROM GenericSubGroup WHERE SubGroupCode = ?"_s},
        {u"SURGERY"_s, u"SELECT SurgeryCode AS PastCode FROM PresSurgery WHERE SurgeryCode = ? "
                       "UNION SELECT PastCode FROM PatientPast WHERE PastType = 'P' AND PastCode = ? "
                       "UNION SELECT PastCode FROM PresPast WHERE PastType = 'P' AND PastCode = ? "
                       "UNION SELECT PastCode FROM VisitPast WHERE PastType = 'P' AND PastCode = ?"_s},
        {u"SYMBOLS"_s, u"SELECT SymbolCode FROM PresDet WHERE SymbolCode = ? "
                       "UNION SELECT SymbolCode FROM ReadyDet WHERE SymbolCode = ?"_s},
        {u"VACCINE"_s, u"SELECT VacCode FROM SchVaccine WHERE VacCode = ? "
                       "UNION SELECT VacCode FROM VacDose WHERE VacCode = ? "
                       "UNION SELECT VacCode FROM VacContra WHERE VacCode = ? "
                       "UNION SELECT VacCode FROM ImmDetail WHERE VacCode = ?"_s},
    };
    return statements;
}

// Where each master keeps its names: the table, the name column and any condition of its own. The trimmed
// stored name is compared with the given one without case, as the clinic's database compares text.
struct NameSource {
    QString table;
    QString column;
    QString condition;
};

const std::map<QString, NameSource>& NameSources() {
    static const std::map<QString, NameSource> sources = {
        {u"ALLERGY"_s, {u"Allergies"_s, u"Name"_s, {}}},
        {u"ALLERGYTYPE"_s, {u"AllergyTypes"_s, u"Name"_s, {}}},
        {u"BRAND"_s, {u"GenericName"_s, u"Name"_s, {}}},
        {u"CITY"_s, {u"City"_s, u"Name"_s, {}}},
        {u"COMMENT"_s, {u"Remarks"_s, u"Name"_s, u" AND RType = 'S'"_s}},
        {u"COMPANY"_s, {u"Manufacturer"_s, u"Name"_s, {}}},
        {u"COMPLAINT"_s, {u"Complaints"_s, u"Name"_s, {}}},
        {u"CONTRA"_s, {u"ContraIndication"_s, u"Name"_s, {}}},
        {u"DEPARTMENT"_s, {u"Department"_s, u"Name"_s, {}}},
        {u"DISEASE"_s, {u"Disease"_s, u"Name"_s, {}}},
        {u"DOCTOR"_s, {u"Prescriber"_s, u"Name"_s, {}}},
        {u"DOSAGEFORM"_s, {u"DosageForm"_s, u"Name"_s, {}}},
        {u"DOSE"_s, {u"DoseName"_s, u"Name"_s, {}}},
        {u"DRUGGROUP"_s, {u"DrugGroup"_s, u"Name"_s, {}}},
        {u"DSGREMARK"_s, {u"DsgRemark"_s, u"Name"_s, {}}},
        {u"EMPLOYER"_s, {u"Company"_s, u"CompanyName"_s, {}}},
        {u"GROUP"_s, {u"GroupName"_s, u"Name"_s, {}}},
        {u"INDICATION"_s, {u"Indication"_s, u"Name"_s, {}}},
        {u"INTERACTION"_s, {u"InteractionType"_s, u"Name"_s, {}}},
        {u"INVCATEGORY"_s, {u"InvCategory"_s, u"Name"_s, {}}},
        {u"INVESTIGATION"_s, {u"Investigation"_s, u"Name"_s, {}}},
        {u"OCCUPATION"_s, {u"Occupation"_s, u"Name"_s, {}}},
        {u"PATIENT"_s, {u"Patient"_s, u"Name"_s, {}}},
        {u"PERSONAL"_s, {u"Personal"_s, u"Name"_s, {}}},
        {u"PHARMA"_s, {u"PharmaName"_s, u"Name"_s, {}}},
        {u"PHYSICAL"_s, {u"Physical"_s, u"Name"_s, {}}},
        {u"PROFILE"_s, {u"InvProfiles"_s, u"Name"_s, {}}},
        {u"READYMADE"_s, {u"Readymade"_s, u"Name"_s, {}}},
        {u"RELATION"_s, {u"Relation"_s, u"Relation"_s, {}}},
        {u"REMARK"_s, {u"Remarks"_s, u"Name"_s, u" AND RType = 'P'"_s}},
        {u"SERIES"_s, {u"Series"_s, u"SeriesName"_s, {}}},
        {u"SIDE"_s, {u"SideEffect"_s, u"Name"_s, {}}},
        {u"SPECIAL"_s, {u"SpecialCare"_s, u"Name"_s, {}}},
        {u"SPONSOR"_s, {u"Payer"_s, u"PayerName"_s, {}}},
        {u"SUBALLERGY"_s, {u"AllergySub"_s, u"Name"_s, {}}},
        {u"SUBGROUP"_s, {u"SubGroup"_s, u"Name"_s, u" AND GroupCode = ?"_s}},
        {u"SURGERY"_s, {u"Surgery"_s, u"Name"_s, {}}},
        {u"SYMBOLS"_s, {u"Symbols"_s, u"Name"_s, {}}},
        {u"VACCINE"_s, {u"Vaccine"_s, u"Name"_s, {}}},
    };
    return sources;
}

// Runs the statement left in the shared statement variable: true when it gives a row.
bool HasRow(ProcessState& state) {
    return state.OpenDb.exists(state.ScratchSql.sql, state.ScratchSql.params);
}

} // namespace

bool IsCodeInUse(ProcessState& state, qint64 code, const QString& key) {
    const auto& statements = InUseStatements();
    const auto it = statements.find(key.toUpper());
    if (it == statements.end())
        return false;
    const QString& sql = it->second;
    state.ScratchSql = {sql, QVariantList(sql.count(u'?'), code)};
    return HasRow(state);
}

bool IsDuplicateName(ProcessState& state, qint64 code, const QString& name, const QString& key, int editMode,
                     qint64 parentCode) {
    const auto& sources = NameSources();
    const auto it = sources.find(key.toUpper());
    if (it == sources.end())
        return false;
    const NameSource& source = it->second;
    QString sql =
        u"SELECT Code FROM %1 WHERE TRIM(%2) = ? COLLATE NOCASE"_s.arg(source.table, source.column) +
        source.condition;
    QVariantList params{name};
    if (source.condition.contains(u'?'))
        params << parentCode;
    if (editMode != 1) {
        sql += u" AND Code <> ?"_s;
        params << code;
    }
    state.ScratchSql = {sql, params};
    return HasRow(state);
}

} // namespace vantrel
