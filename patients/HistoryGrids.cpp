#include "patients/HistoryGrids.h"

#include "core/Lookup.h"
#include "core/Prompter.h"
#include "core/Screen.h"
#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

// A column filled from a pick list: its code, its name, and the list's other columns it takes.
struct Pick {
    int number;
    const char16_t* codeField;
    const char16_t* nameField;
    const char16_t* dropDown;
    const char16_t* blank;
    const char16_t* invalid;
    // Fields set from the list's second and third displayed columns ("" for none).
    const char16_t* second;
    const char16_t* third;
};

struct HistoryList {
    const char16_t* grid;
    const char16_t* heading;
    const char16_t* table; // after the staging prefix
    std::vector<GridColumn> columns;
    std::vector<Pick> picks; // the name first
    const char16_t* duplicate;
    QStringList key; // fields that together may stand once
};

const char16_t* const AgeBlank = u"Age of Presentation Cannot be Left Blank.";
const char16_t* const AgeInvalid = u"Invalid Age of Presentation.";

const std::vector<HistoryList>& Lists() {
    static const std::vector<HistoryList> lists{
        {u"GrdAllergy",
         u"Patient's Allergy [ Drugs / Drug Groups / Other Allergies ]",
         u"Allergy",
         {CodeColumn(0, u"AllergyCode"_s),
          ShownColumn(1, u"AllergyName"_s, u"Allergy Details"_s, 24, u"AllergyDD"_s),
          CodeColumn(2, u"AllergyType"_s), ShownColumn(3, u"Type"_s, u"Allergy Type"_s, 12),
          CodeColumn(4, u"AgeCode"_s),
          ShownColumn(5, u"AgeName"_s, u"Age Since (Yr)"_s, 10, u"AllergyAgeDD"_s),
          ShownColumn(6, u"Notes"_s, u"Notes / Comments"_s, 20)},
         {{1, u"AllergyCode", u"AllergyName", u"AllergyDD", u"Allergy Details Cannot be Left Blank.",
           u"Invalid Allergy Details.", u"AllergyType", u"Type"},
          {5, u"AgeCode", u"AgeName", u"AllergyAgeDD", AgeBlank, AgeInvalid, u"", u""}},
         u"Duplicate Allergy Details.",
         {u"AllergyCode"_s, u"AllergyType"_s}},
        {u"GrdPersonal",
         u"Patient's Personal History",
         u"Personal",
         {CodeColumn(0, u"PersonalCode"_s),
          ShownColumn(1, u"PersonalName"_s, u"Personal History"_s, 24, u"PersonalDD"_s),
          ShownColumn(2, u"TimeSince"_s, u"Since (Yrs)"_s, 8), ShownColumn(3, u"Qty"_s, u"Quantity"_s, 8),
          ShownColumn(4, u"Notes"_s, u"Notes / Comments"_s, 20), CodeColumn(5, u"Quantative"_s)},
         {{1, u"PersonalCode", u"PersonalName", u"PersonalDD", u"Personal Details Cannot be Left Blank.",
           u"Invalid Personal Details.", u"", u"Quantative"}},
         u"Duplicate Personal Details.",
         {u"PersonalCode"_s}},
        {u"GrdPast",
         u"Patient's Past History [ Diseases / Procedures ]",
         u"Past",
         {CodeColumn(0, u"PastCode"_s), ShownColumn(1, u"PastName"_s, u"Past History"_s, 24, u"PastDD"_s),
          ShownColumn(2, u"Type"_s, u"Type"_s, 10), CodeColumn(3, u"PastType"_s), CodeColumn(4, u"AgeCode"_s),
          ShownColumn(5, u"AgeName"_s, u"Age Since (Yr)"_s, 10, u"PastAgeDD"_s),
          ShownColumn(6, u"Notes"_s, u"Notes / Comments"_s, 20)},
         {{1, u"PastCode", u"PastName", u"PastDD", u"Past History Details Cannot be Left Blank.",
           u"Invalid Past History Details.", u"PastType", u"Type"},
          {5, u"AgeCode", u"AgeName", u"PastAgeDD", AgeBlank, AgeInvalid, u"", u""}},
         u"Duplicate Past History Details.",
         {u"PastCode"_s, u"PastType"_s}},
        {u"GrdFamily",
         u"Patient's Family History [ Diseases ]",
         u"Family",
         {CodeColumn(0, u"DiseasesCode"_s),
          ShownColumn(1, u"DiseasesName"_s, u"Disease Name"_s, 24, u"DiseaseDD"_s),
          CodeColumn(2, u"RelationCode"_s),
          ShownColumn(3, u"RelationName"_s, u"Relationship"_s, 12, u"RelationDD"_s),
          CodeColumn(4, u"AgeCode"_s), ShownColumn(5, u"AgeName"_s, u"Age Since (Yr)"_s, 10, u"AgeDD"_s),
          ShownColumn(6, u"Notes"_s, u"Notes / Comments"_s, 20)},
         {{1, u"DiseasesCode", u"DiseasesName", u"DiseaseDD", u"Disease Name Cannot be Left Blank.",
           u"Invalid Disease Name.", u"", u""},
          {3, u"RelationCode", u"RelationName", u"RelationDD", u"Relationship Cannot be Left Blank.",
           u"Invalid Relationship.", u"", u""},
          {5, u"AgeCode", u"AgeName", u"AgeDD", AgeBlank, AgeInvalid, u"", u""}},
         u"Duplicate Disease in Same Relationship.",
         {u"DiseasesCode"_s, u"RelationCode"_s}},
    };
    return lists;
}

QString Text(const char16_t* text) {
    return QString::fromUtf16(text);
}

const Pick* PickOf(const HistoryList& list, int column) {
    for (const Pick& pick : list.picks) {
        if (pick.number == column)
            return &pick;
    }
    return nullptr;
}

// The pick lists, by drop-down; the age lists are copies of one.
struct PickList {
    const char16_t* dropDown;
    const char16_t* sql;
    const char16_t* tables; // the tables it reads, by comma
};
const PickList PickLists[] = {
    {u"AllergyDD",
     u"SELECT Code, Name, 'A' AS AllergyType, 'Allergies' AS Type FROM Allergies UNION ALL "
     u"SELECT Code, Name, 'B' AS AllergyType, 'Sub Allergies' AS Type FROM AllergySub UNION ALL "
     u"SELECT Code, Name, 'D' AS AllergyType, 'Drug Names' AS Type FROM PharmaName UNION ALL "
     u"SELECT Code, Name, 'G' AS AllergyType, 'Drug Groups' AS Type FROM DrugGroup ORDER BY AllergyType, "
     u"Name",
     u"Allergies,AllergySub,PharmaName,DrugGroup"},
    {u"PastDD",
     u"SELECT Code, Name, 'D' AS PastType, 'Diseases' AS Type FROM Disease UNION ALL "
     u"SELECT Code, Name, 'P' AS PastType, 'Procedures' AS Type FROM Surgery ORDER BY PastType, Name",
     u"Disease,Surgery"},
    {u"PersonalDD", u"SELECT Code, Name, PUnit, Quantative FROM Personal ORDER BY Name", u"Personal"},
    {u"RelationDD", u"SELECT Code, Relation FROM Relation ORDER BY Relation", u"Relation"},
    {u"DiseaseDD", u"SELECT Code, Name FROM Disease ORDER BY Name", u"Disease"},
    {u"AgeDD", u"SELECT Code, Name FROM AgeGroup ORDER BY Name", u"AgeGroup"},
    {u"AllergyAgeDD", u"SELECT Code, Name FROM AgeGroup ORDER BY Name", u"AgeGroup"},
    {u"PastAgeDD", u"SELECT Code, Name FROM AgeGroup ORDER BY Name", u"AgeGroup"},
};

} // namespace

HistoryGrids::HistoryGrids(Screen& screen, const QString& stagingPrefix, const QString& tabStrip)
    : m_screen(screen), m_prefix(stagingPrefix) {
    for (const PickList& pick : PickLists)
        screen.add<DropDown>(Text(pick.dropDown));
    const auto& lists = Lists();
    for (int i = 0; i < static_cast<int>(lists.size()); ++i) {
        const HistoryList& list = lists[static_cast<size_t>(i)];
        auto& grid = screen.add<Grid>(Text(list.grid));
        grid.setCaption(Text(list.heading));
        for (const GridColumn& column : list.columns)
            grid.addColumn(column);
        grid.placeOnTab(tabStrip, i + 1);
        grid.locked = true;
        grid.bind(screen.db(), m_prefix + Text(list.table));
        grid.onPick = [&grid, &list](int column, const ListRow& row) {
            const Pick* pick = PickOf(list, column);
            if (!pick)
                return;
            grid.setValue(Text(pick->codeField), row.code);
            grid.setValue(Text(pick->nameField), row.columns.value(0));
            if (*pick->second)
                grid.setValue(Text(pick->second), row.columns.value(1));
            if (*pick->third)
                grid.setValue(Text(pick->third), row.columns.value(2));
        };
        grid.onColumnLeave = [this, i](int column) { return columnLeave(i, column); };
        grid.onCommit = [this, i] { return commit(i); };
    }
}

QStringList HistoryGrids::gridNames() {
    QStringList names;
    for (const HistoryList& list : Lists())
        names << Text(list.grid);
    return names;
}

void HistoryGrids::fillLists() {
    for (const PickList& pick : PickLists)
        FillRowsKept(m_screen.db(), *qobject_cast<ListControl*>(m_screen.control(Text(pick.dropDown))),
                     Text(pick.sql), Text(pick.tables).split(u','));
}

void HistoryGrids::reload() {
    for (const HistoryList& list : Lists())
        qobject_cast<Grid*>(m_screen.control(Text(list.grid)))->reload();
}

void HistoryGrids::setEditable(bool on) {
    for (const HistoryList& list : Lists())
        qobject_cast<Grid*>(m_screen.control(Text(list.grid)))->setLocked(!on);
}

bool HistoryGrids::columnLeave(int index, int column) {
    const HistoryList& list = Lists()[static_cast<size_t>(index)];
    auto& grid = *qobject_cast<Grid*>(m_screen.control(Text(list.grid)));
    // A quantity belongs to a habit that is measured.
    if (index == 1 && column == 3 && !grid.value(u"Quantative"_s).toBool()) {
        grid.setValue(u"Qty"_s, QString());
        return true;
    }
    return !PickOf(list, column) || listColumnLeave(index, column);
}

// A column of a pick list takes the row its text names; the name must stand once in the list.
bool HistoryGrids::listColumnLeave(int index, int column) {
    const HistoryList& list = Lists()[static_cast<size_t>(index)];
    const Pick& pick = *PickOf(list, column);
    auto& grid = *qobject_cast<Grid*>(m_screen.control(Text(list.grid)));
    const auto& rows = qobject_cast<ListControl*>(m_screen.control(Text(pick.dropDown)))->rows();
    const QString name = grid.text(Text(pick.nameField)).trimmed();
    if (name.isEmpty()) {
        m_screen.prompter().stop(Text(pick.blank));
        return false;
    }
    // Rows of several tables may share a name: the kind already on the line decides, else the first.
    const QString kind = *pick.second ? grid.text(Text(pick.second)) : QString();
    int found = -1;
    for (int row = 0; row < static_cast<int>(rows.size()); ++row) {
        const ListRow& r = rows[static_cast<size_t>(row)];
        if (r.columns.value(0).trimmed().compare(name, Qt::CaseInsensitive) != 0)
            continue;
        if (found < 0 || (!kind.isEmpty() && r.columns.value(1) == kind))
            found = row;
    }
    if (found < 0) {
        m_screen.prompter().stop(Text(pick.invalid));
        return false;
    }
    grid.onPick(column, rows[static_cast<size_t>(found)]);
    if (column != 1 && !(index == 3 && column == 3))
        return true;
    QStringList conditions;
    QVariantList values;
    for (const QString& field : list.key) {
        conditions << field + u" = ?"_s;
        values << grid.value(field);
    }
    values << grid.rowId(grid.currentRow());
    if (m_screen.db().exists(u"SELECT 1 FROM %1%2 WHERE %3 AND rowid <> ?"_s.arg(m_prefix, Text(list.table),
                                                                                 conditions.join(u" AND "_s)),
                             values)) {
        m_screen.prompter().stop(Text(list.duplicate));
        return false;
    }
    return true;
}

bool HistoryGrids::commit(int index) {
    const HistoryList& list = Lists()[static_cast<size_t>(index)];
    for (const Pick& pick : list.picks) {
        if (!listColumnLeave(index, pick.number))
            return false;
    }
    return true;
}

} // namespace vantrel
