#include "core/Lookup.h"
#include "core/Prompter.h"
#include "prescription/AddToList.h"
#include "prescription/FrmPrescription.h"
#include "store/Database.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

// The three lists of the same shape: a code, a name picked from the list's popup, and a remark.
struct ClinicalList {
    const char16_t* grid;
    const char16_t* heading;
    const char16_t* table;
    const char16_t* codeField;
    const char16_t* nameField;
    const char16_t* nameHeading;
    const char16_t* notesHeading;
    const char16_t* dropDown;
    const char16_t* popup;
    const char16_t* master;
    const char16_t* remarkBox;
    const char16_t* invalid;
    const char16_t* duplicate;
    const char16_t* invalidOnCommit;
};

enum { Complaints = 0, Diseases = 1, Procedures = 2 };

const ClinicalList Lists[] = {
    {u"GrdComplaint", u"Patient's Complaints / Reported Problems", u"TmpComplaint", u"ComplaintCode",
     u"ComplaintName", u"Complaints / Problems Reported", u"Remarks ( Comments )", u"ComplaintDD",
     u"SELECT Code, Name FROM Complaints ORDER BY Name", u"Complaints", u"TxtComplaint",
     u"Invalid Complaint.", u"Duplicate Complaint.", u"Invalid Complaint Name."},
    {u"GrdDiseases", u"Provisional Diagnosis / Diagnosis", u"TmpDisease", u"DiseaseCode", u"DiseaseName",
     u"Diseases Name", u"Notes", u"DiseasesDD",
     u"SELECT Code, Name, Familial, Congenital, Communicable, LifeStyle, Genetic, TypeNotes, DiseaseSex, "
     u"DiseaseCategory, Notes FROM Disease ORDER BY Name",
     u"Disease", u"TxtDiseases", u"Invalid Diseases Name.", u"Duplicate Diseases.",
     u"Invalid Diseases Name."},
    {u"GrdProcedure", u"Procedures / Surgical Procedures", u"TmpSurgery", u"SurgeryCode", u"SurgeryName",
     u"Procedure Name", u"Notes", u"ProcedureDD", u"SELECT Code, Name FROM Surgery ORDER BY Name", u"Surgery",
     u"TxtProcedure", u"Invalid Procedure Name.", u"Duplicate Procedure.", u"Invalid Procedure Name."},
};

QString Text(const char16_t* text) {
    return QString::fromUtf16(text);
}

// The toggles by the state they set (SafeFieldCode), and the words of a patient's condition.
int ToggleOf(int field) {
    static const int toggles[] = {-1, 1, 2, 0, -1, 4, 3, 5};
    return field >= 1 && field <= 7 ? toggles[field] : -1;
}

} // namespace

void FrmPrescription::addClinicalLists() {
    for (int i = 0; i < 3; ++i) {
        const ClinicalList& list = Lists[i];
        add<DropDown>(Text(list.dropDown));
        auto& grid = add<Grid>(Text(list.grid));
        grid.setCaption(Text(list.heading));
        grid.addColumn(CodeColumn(0, Text(list.codeField)));
        grid.addColumn(ShownColumn(1, Text(list.nameField), Text(list.nameHeading), 30, Text(list.dropDown)));
        grid.addColumn(ShownColumn(2, u"Notes"_s, Text(list.notesHeading), 30));
        grid.placeOnTab(u"SsTabComplaint"_s, i);
        grid.bind(db(), Text(list.table));
        grid.onPick = [&grid, list](int column, const ListRow& row) {
            if (column != 1)
                return;
            grid.setValue(Text(list.codeField), row.code);
            grid.setValue(Text(list.nameField), row.columns.value(0));
        };
        grid.onColumnLeave = [this, i](int column) { return column != 1 || clinicalNameLeave(i); };
        grid.onCommit = [this, i] { return clinicalCommit(i); };
        auto& remark = add<TextBox>(Text(list.remarkBox));
        remark.setMultiLine(true);
        remark.placeOnTab(u"SsTabComplaint"_s, i);
        remark.onValidate = [this, i] { return clinicalRemarkLeave(i); };
        grid.onRowChange = [&grid, &remark] { remark.setText(grid.text(u"Notes"_s)); };
    }
    // Leaving the diagnoses after a change offers the investigations they advise.
    control(u"GrdDiseases"_s)->onLostFocus = [this] {
        if (m_diseasesChanged && qobject_cast<Grid*>(control(u"GrdDiseases"_s))->rowCount() > 0)
            loadAdvisedInvestigations();
    };
}

bool FrmPrescription::clinicalNameLeave(int index) {
    if (PresMode == 0)
        return true;
    const ClinicalList& list = Lists[index];
    auto& grid = *qobject_cast<Grid*>(control(Text(list.grid)));
    auto& popup = *qobject_cast<DropDown*>(control(Text(list.dropDown)));
    const QString codeField = Text(list.codeField);
    const QString nameField = Text(list.nameField);
    const QString name = grid.text(nameField).trimmed();
    if (name.isEmpty()) {
        if (index == Complaints) {
            prompter().stop(u"Complaint Cannot be Left Blank."_s);
            return false;
        }
        grid.setValue(codeField, QVariant());
        return true;
    }
    int found = -1;
    for (int row = 0; row < popup.count() && found < 0; ++row) {
        if (popup.rows().at(row).columns.value(0).trimmed().compare(name, Qt::CaseInsensitive) == 0)
            found = row;
    }
    qint64 code = 0;
    if (found < 0) {
        if (index != Complaints) {
            prompter().stop(Text(list.invalid));
            return false;
        }
        if (!prompter().ask(u"Complaint Does Not Exist in List. Want to Add the Same in List ?"_s))
            return false;
        code = AddToList(db(), prompter(), u"COMPLAINT"_s, name);
        if (code == 0) {
            prompter().stop(Text(list.invalid));
            return false;
        }
        FillRows(db(), popup, Text(list.popup));
    } else {
        // A name typed in full takes the code of its row, as a pick does.
        code = popup.rows().at(found).code.toLongLong();
    }
    const QString previous =
        grid.onNewLine() ? QString() : grid.storedValue(grid.currentRow(), codeField).toString();
    grid.setValue(codeField, code);
    if (db().exists(u"SELECT 1 FROM %1 WHERE %2 = ? AND rowid <> ?"_s.arg(Text(list.table), codeField),
                    {code, grid.rowId(grid.currentRow())})) {
        prompter().stop(Text(list.duplicate));
        return false;
    }
    const auto row =
        db().first(u"SELECT * FROM %1 WHERE Code = ? AND Name = ?"_s.arg(Text(list.master)), {code, name});
    if (!row) {
        prompter().stop(Text(list.invalid));
        return false;
    }
    grid.setValue(nameField, row->text(u"Name"_s));
    if (index == Diseases && previous != QString::number(code)) {
        if (!CheckDiseaseEntry(*row))
            return false;
        m_diseasesChanged = true;
    }
    return true;
}

// A line is written only when it still names an entry of its list once; a bad one is dropped.
bool FrmPrescription::clinicalCommit(int index) {
    const ClinicalList& list = Lists[index];
    auto& grid = *qobject_cast<Grid*>(control(Text(list.grid)));
    const qint64 code = grid.value(Text(list.codeField)).toLongLong();
    const QString name = grid.text(Text(list.nameField)).trimmed();
    if (code <= 0 && name.isEmpty())
        return true;
    const bool known =
        code > 0 &&
        db().exists(u"SELECT 1 FROM %1 WHERE Code = ? AND Name = ?"_s.arg(Text(list.master)), {code, name});
    const bool twice = db().exists(
        u"SELECT 1 FROM %1 WHERE %2 = ? AND rowid <> ?"_s.arg(Text(list.table), Text(list.codeField)),
        {code, grid.rowId(grid.currentRow())});
    if (!known || twice) {
        prompter().stop(twice && known ? Text(list.duplicate) : Text(list.invalidOnCommit));
        grid.discard();
    }
    return true;
}

bool FrmPrescription::clinicalRemarkLeave(int index) {
    const ClinicalList& list = Lists[index];
    auto& grid = *qobject_cast<Grid*>(control(Text(list.grid)));
    if (PresMode == 0 || grid.text(Text(list.nameField)).trimmed().isEmpty())
        return true;
    const QString text = qobject_cast<TextBox*>(control(Text(list.remarkBox)))->text().trimmed();
    if (text == grid.text(u"Notes"_s))
        return true;
    grid.setValue(u"Notes"_s, text);
    grid.commit();
    return true;
}

// The patient's active states as the list of their codes, "1,3".
QString FrmPrescription::activeStates() const {
    QStringList codes;
    for (int field = 1; field <= 7; ++field) {
        if (states.at(field))
            codes << QString::number(field);
    }
    return codes.join(u',');
}

// A diagnosis that does not fit the patient's sex or state is asked about; one whose state is not yet on
// offers to turn its toggle on.
bool FrmPrescription::CheckDiseaseEntry(const Row& disease) {
    const QString sex = qobject_cast<TextBox*>(control(u"TxtSex"_s))->text();
    const bool male = sex.compare(u"Male"_s, Qt::CaseInsensitive) == 0;
    const QString diseaseSex = disease.text(u"DiseaseSex"_s).trimmed().toUpper();
    if ((diseaseSex == u"M"_s || diseaseSex == u"F"_s) && diseaseSex != (male ? u"M"_s : u"F"_s) &&
        !prompter().ask(u"Disease is Marked As '"_s + (diseaseSex == u"M"_s ? u"Male"_s : u"Female"_s) +
                        u"' Disease And Patient is '"_s + sex + u"'.\nWant to Continue ?"_s))
        return false;
    const int category = static_cast<int>(disease.integer(u"DiseaseCategory"_s));
    if (category < 1 || category > 7)
        return true;
    const QString categoryName =
        db().scalar(u"SELECT Name FROM SafetyPara WHERE Code = ?"_s, {category}).toString();
    // The condition of the patient that the category contradicts, if any.
    QString conflict;
    if ((category == 1 || category == 2) && male)
        conflict = u"' Related Disease And Patient is 'Male'."_s;
    else if ((category == 1 || category == 2 || category == 4) && states.at(3))
        conflict = u"' Related Disease And Patient is in 'Paediatric' Condition."_s;
    else if (category == 3 && states.at(4))
        conflict = u"' Related Disease And Patient is in 'Elder Age' Condition."_s;
    else if (category == 3 && states.at(1))
        conflict = u"' Related Disease And Patient is in 'Pregnant' Condition."_s;
    else if (category == 3 && states.at(2))
        conflict = u"' Related Disease And Patient is in 'Lactating' Condition."_s;
    if (!conflict.isEmpty() && !prompter().ask(u"Disease is Categorized in '"_s + categoryName + conflict +
                                               u"\nWant to Continue ?"_s))
        return false;
    const int toggle = ToggleOf(category);
    if (toggle < 0 || states.at(category))
        return true;
    auto& box = *qobject_cast<CheckBox*>(control(u"ChkSafety"_s, toggle));
    const QString offer =
        u"Enable '"_s + box.caption() +
        u"' Toggle Switch [In Patient Details] to Activate Safety Alerts / Warnings for the Same."_s;
    if (!box.enabled()) {
        prompter().stop(offer);
        return true;
    }
    if (prompter().ask(offer + u"\nEnable it Now ?"_s)) {
        box.setValue(true);
        toggleState(toggle);
    }
    return true;
}

void FrmPrescription::loadAdvisedInvestigations() {
    m_diseasesChanged = false;
    if (!prompter().ask(u"Want to Load the Advised Investigations for the Selected Diseases ?"_s))
        return;
    std::vector<ListRow> advised;
    const auto take = [&advised](const Rows& rows) {
        for (const Row& row : rows) {
            const QVariant code = row.value(u"InvestigationCode"_s);
            if (std::none_of(advised.begin(), advised.end(),
                             [&code](const ListRow& r) { return r.code == code; }))
                advised.push_back({code, {row.text(u"Name"_s)}});
        }
    };
    take(db().select(u"SELECT A.InvestigationCode, B.Name FROM InvDiseases A, Investigation B, TmpDisease C "
                     "WHERE A.DiseasesCode = C.DiseaseCode AND A.InvestigationCode = B.Code "
                     "GROUP BY A.InvestigationCode, B.Name ORDER BY B.Name"_s));
    const QString active = activeStates();
    if (!active.isEmpty()) {
        QVariantList params;
        QStringList marks;
        for (const QString& field : active.split(u',')) {
            params << field.toInt();
            marks << u"?"_s;
        }
        take(db().select(
            u"SELECT A.InvestigationCode, B.Name FROM DiseaseInv A, Investigation B, TmpDisease C "
            "WHERE A.DiseasesCode = C.DiseaseCode AND A.InvestigationCode = B.Code "
            "AND A.SafeFieldCode IN (%1)"_s.arg(marks.join(u", "_s)),
            params));
    }
    qobject_cast<ListBox*>(control(u"LstInvestigation"_s))->setRows(std::move(advised));
}

} // namespace vantrel
