#include "core/Process.h"
#include "masters/MasterScreen.h"

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

// The masters of a code and a name, one row each. A master differs from another only by its row.
std::vector<MasterDefinition> SimpleMasters() {
    std::vector<MasterDefinition> m;
    m.push_back(StandardMaster(u"Mst_Company"_s, u"Manufacturer"_s, u"COMPANY"_s, u"Manufacturer"_s,
                               u"SELECT * FROM Manufacturer ORDER BY Name, Code"_s,
                               u"List of All Avaliable Manufacturers"_s, u"Locate a Specified Manufacturer"_s,
                               u"   [Manufacturer Master]"_s));
    m.push_back(StandardMaster(u"Mst_Indication"_s, u"Indication"_s, u"INDICATION"_s, u"Indication"_s,
                               u"SELECT * FROM Indication ORDER BY Name, Code"_s,
                               u"List of All Avaliable Indications"_s, u"Locate a Specified Indication"_s,
                               u"   [Indication Master]"_s));
    m.push_back(StandardMaster(u"Mst_SideEffect"_s, u"SideEffect"_s, u"SIDE"_s, u"Side Effect"_s,
                               u"SELECT * FROM SideEffect ORDER BY Name, Code"_s,
                               u"List of All Avaliable Side Effects"_s, u"Locate a Specified Side Effect"_s,
                               u"   [Side Effect Master]"_s));
    m.push_back(StandardMaster(u"Mst_Contra"_s, u"ContraIndication"_s, u"CONTRA"_s, u"Contra-Indication"_s,
                               u"SELECT * FROM ContraIndication ORDER BY Name, Code"_s,
                               u"List of All Avaliable Contra Indications"_s,
                               u"Locate a Specified Contra Indication"_s,
                               u"   [Contra Indication Master]"_s));

    MasterDefinition interaction = StandardMaster(
        u"Mst_Interaction"_s, u"InteractionType"_s, u"INTERACTION"_s, u"Interaction Detail"_s,
        u"SELECT * FROM InteractionType ORDER BY Name, Code"_s,
        u"List of All Avaliable Drug Interaction Details"_s, u"Locate a Specified Interaction Detail"_s,
        u"   [Interaction Details (Type of Interactions)]"_s);
    interaction.empty = interaction.blank = u"Interaction Detail Should Not be Blank."_s;
    interaction.duplicate = u"Duplicate Interaction Detail."_s;
    interaction.fixedColumns = {{u"iType"_s, u"D"_s}};
    m.push_back(interaction);

    m.push_back(StandardMaster(u"Mst_DosageForm"_s, u"DosageForm"_s, u"DOSAGEFORM"_s, u"Dosage Form"_s,
                               u"SELECT * FROM DosageForm ORDER BY Name, Code"_s,
                               u"List of All Avaliable Dosage Forms"_s, u"Locate a Specified Dosage Form"_s,
                               u"   [Dosage Forms Master]"_s));
    m.push_back(StandardMaster(u"Mst_Group"_s, u"GroupName"_s, u"GROUP"_s, u"Group"_s,
                               u"SELECT * FROM GroupName ORDER BY Name, Code"_s,
                               u"List of All Avaliable Groups"_s, u"Locate a Specified Group"_s,
                               u"   [Group Master]"_s));

    MasterDefinition city = StandardMaster(
        u"Mst_City"_s, u"City"_s, u"CITY"_s, u"City"_s, u"SELECT * FROM City ORDER BY Name, Code"_s,
        u"List of All Avaliable Cities"_s, u"Locate a Specified City"_s, u"   [City Master]"_s);
    city.blank = u"City Description Should Not be Left Blank."_s;
    m.push_back(city);

    m.push_back(StandardMaster(u"Mst_Surgery"_s, u"Surgery"_s, u"SURGERY"_s, u"Procedure"_s,
                               u"SELECT * FROM Surgery ORDER BY Name, Code"_s,
                               u"List of All Avaliable Procedures"_s, u"Locate a Specified Procedure"_s,
                               u"   [Procedures Master]"_s));
    m.push_back(StandardMaster(
        u"Mst_SpecialCare"_s, u"SpecialCare"_s, u"SPECIAL"_s, u"Precaution"_s,
        u"SELECT * FROM SpecialCare ORDER BY Name, Code"_s, u"List of All Avaliable Special Precautions"_s,
        u"Locate a Specified Special Precaution"_s, u"   [Special Precaution Master]"_s));
    m.push_back(StandardMaster(u"Mst_Department"_s, u"Department"_s, u"DEPARTMENT"_s, u"Department"_s,
                               u"SELECT * FROM Department ORDER BY Name, Code"_s,
                               u"List of All Avaliable Departments"_s, u"Locate a Specified Department"_s,
                               u"   [Department Master]"_s));

    MasterDefinition remarks = StandardMaster(
        u"Mst_DsgRemarks"_s, u"DsgRemark"_s, u"DSGREMARK"_s, u"Comment"_s,
        u"SELECT * FROM DsgRemark ORDER BY Name, Code"_s, u"List of All Avaliable Brand Dosage Remarks"_s,
        u"Locate a Specified Brand Dosage Remark"_s, u"   [Brand Dosage Remarks Master]"_s);
    NameMessages(remarks, u"Dosage Remark"_s, u"Duplicate Dosage Remark."_s);
    m.push_back(remarks);

    m.push_back(StandardMaster(u"Mst_InvCategories"_s, u"InvCategory"_s, u"INVCATEGORY"_s, u"Category"_s,
                               u"SELECT * FROM InvCategory ORDER BY Name, Code"_s,
                               u"List of All Avaliable Investigation Categories"_s,
                               u"Locate a Specified Investigation Category"_s,
                               u"   [Investigation Categories Master]"_s));

    MasterDefinition symbols = StandardMaster(
        u"Mst_Symbols"_s, u"Symbols"_s, u"SYMBOLS"_s, u"Symbol"_s,
        u"SELECT * FROM Symbols ORDER BY Name, Code"_s, u"List of All Avaliable Dosage Symbols"_s,
        u"Locate a Specified Dosage Symbol"_s, u"   [Dosage Symbols Master]"_s);
    NameMessages(symbols, u"Dosage Symbol"_s, u"Duplicate Symbol."_s);
    m.push_back(symbols);

    m.push_back(StandardMaster(u"Mst_Complaints"_s, u"Complaints"_s, u"COMPLAINT"_s, u"Complaint"_s,
                               u"SELECT * FROM Complaints ORDER BY Name, Code"_s,
                               u"List of All Avaliable Complaints"_s, u"Locate a Specified Complaint"_s,
                               u"   [Complaints Master]"_s));
    m.push_back(StandardMaster(
        u"Mst_InvProfiles"_s, u"InvProfiles"_s, u"PROFILE"_s, u"Profile"_s,
        u"SELECT * FROM InvProfiles ORDER BY Name, Code"_s, u"List of All Avaliable Investigation Profiles"_s,
        u"Locate a Specified Investigation Profile"_s, u"   [Investigation Profiles Master]"_s));
    m.push_back(StandardMaster(u"Mst_DrugGroup"_s, u"DrugGroup"_s, u"DRUGGROUP"_s, u"Drug Group"_s,
                               u"SELECT * FROM DrugGroup ORDER BY Name, Code"_s,
                               u"List of All Avaliable Drug Groups"_s, u"Locate a Specified Drug Group"_s,
                               u"   [Drug Group Master]"_s));
    return m;
}

const bool registered = [] {
    for (const MasterDefinition& definition : SimpleMasters()) {
        ScreenRegistry::instance().add(definition.screen, [definition](Process& process) {
            return std::unique_ptr<Screen>(new MasterScreen(process, definition));
        });
    }
    return true;
}();

} // namespace

} // namespace vantrel
