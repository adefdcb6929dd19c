#include "core/Lookup.h"
#include "core/Process.h"
#include "core/Prompter.h"
#include "prescription/AddToList.h"
#include "prescription/FrmPrescription.h"
#include "store/Database.h"

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

// The popup's row of a brand in one form: its codes are kept together in the row's code.
qint64 BrandOf(const ListRow& row) {
    return row.code.toList().value(0).toLongLong();
}

qint64 FormOf(const ListRow& row) {
    return row.code.toList().value(1).toLongLong();
}

int FindBrandRow(const ListControl& list, qint64 brand, qint64 form) {
    const auto& rows = list.rows();
    for (size_t i = 0; i < rows.size(); ++i) {
        if (BrandOf(rows[i]) == brand && FormOf(rows[i]) == form)
            return static_cast<int>(i);
    }
    return -1;
}

bool SameText(const QString& a, const QString& b) {
    return a.trimmed().compare(b.trimmed(), Qt::CaseInsensitive) == 0;
}

// The row of a code-and-name list whose name is the text, or -1.
int FindName(const ListControl& list, const QString& text) {
    const auto& rows = list.rows();
    for (size_t i = 0; i < rows.size(); ++i) {
        if (SameText(rows[i].columns.value(0), text))
            return static_cast<int>(i);
    }
    return -1;
}

struct Filter {
    const char16_t* combo;
    const char16_t* tab;
    const char16_t* message;
    qint64 BrandFilters::*code;
};
const Filter Filters[] = {
    {u"CmbPharma", u"Drug", u"Invalid Drug Name.", &BrandFilters::drug},
    {u"CmbIndication", u"Indication", u"Invalid Indication.", &BrandFilters::indication},
    {u"CmbGroup", u"Group", u"Invalid Group Name.", &BrandFilters::group},
    {u"CmbCompany", u"Company", u"Invalid Company.", &BrandFilters::company},
};

enum BrandButton { History = 0, BrandInfo, Substitutes, Locate, Interaction };

} // namespace

void FrmPrescription::addBrandControls() {
    auto& search = add<TabStrip>(u"SsTabSearch"_s);
    search.setTabStop(false);
    search.placeOnTab(u"SsTabMain"_s, 0);
    for (int i = 0; i < 4; ++i) {
        const Filter& f = Filters[i];
        search.tabs.append(QString::fromUtf16(f.tab));
        auto& combo = add<ComboBox>(QString::fromUtf16(f.combo));
        combo.placeOnTab(u"SsTabSearch"_s, i);
        combo.onValidate = [this, &combo, i] {
            return filterLeave(combo, m_filters.*(Filters[i].code), QString::fromUtf16(Filters[i].message));
        };
        combo.onClick = [this, &combo, i] {
            m_filters.*(Filters[i].code) = ChosenCode(combo);
            showSearchText();
        };
        combo.onKeyPress = [this, &combo, i](int key) -> KeyResult {
            if (key != 13)
                return {key, false};
            // Enter in a filled filter goes on to the next filter, in a blank one to the brand lines.
            if (!combo.text().trimmed().isEmpty() && i < 3) {
                if (moveFocus(control(QString::fromUtf16(Filters[i + 1].combo))))
                    qobject_cast<TabStrip*>(control(u"SsTabSearch"_s))->setCurrent(i + 1);
            } else {
                moveFocus(m_brands);
            }
            return {0, false};
        };
    }
    auto& searchText = add<Label>(u"LblSearch"_s);
    searchText.setTabStop(false);
    auto& advanced = add<Label>(u"LblAdvSearch"_s);
    advanced.setCaption(u"Advanced Search"_s);
    advanced.onClick = [this] {
        if (!ScreenRegistry::instance().has(u"AdvSearch"_s))
            return notAvailable();
        process().openModal(u"AdvSearch"_s);
        clearFilters();
    };

    m_brandList = &add<DropDown>(u"BrandDD"_s);
    m_brandList->columnHeadings = {u"Brands"_s, u"Availability"_s, u"Manufacturer"_s, u"Dosage"_s};
    add<DropDown>(u"SymbolDD"_s);
    add<DropDown>(u"DsgRemarkDD"_s);

    m_brands = &add<Grid>(u"GrdBrand"_s);
    m_brands->setCaption(u"&Rx - Prescribed Brands In Prescription"_s);
    m_brands->placeOnTab(u"SsTabMain"_s, 0);
    m_brands->addColumn(CodeColumn(0, u"Code"_s));
    m_brands->addColumn(ShownColumn(1, u"Name"_s, u"Brand Name"_s, 22, u"BrandDD"_s));
    m_brands->addColumn(CodeColumn(2, u"DsgFmCode"_s));
    GridColumn form = ShownColumn(3, u"DsgFmName"_s, u"Availability"_s, 12);
    form.locked = true;
    m_brands->addColumn(form);
    m_brands->addColumn(CodeColumn(4, u"SymbolCode"_s));
    m_brands->addColumn(ShownColumn(5, u"SymbolName"_s, u"Dosage Symbols"_s, 10, u"SymbolDD"_s));
    m_brands->addColumn(CodeColumn(6, u"DsgRemarkCode"_s));
    m_brands->addColumn(ShownColumn(7, u"DsgRemarkName"_s, u"Dosage Comments"_s, 16, u"DsgRemarkDD"_s));
    m_brands->addColumn(ShownColumn(8, u"Dosage"_s, u"Dosage"_s, 24));
    GridColumn remember = ShownColumn(9, u"Update"_s, u"Update"_s, 6);
    remember.checkBox = true;
    m_brands->addColumn(remember);
    m_brands->bind(db(), u"TmpDet"_s);
    m_brands->onPick = [this](int column, const ListRow& row) {
        if (column == 1) {
            pickBrand(row);
        } else {
            const bool symbol = column == 5;
            m_brands->setValue(symbol ? u"SymbolCode"_s : u"DsgRemarkCode"_s, row.code);
            m_brands->setValue(symbol ? u"SymbolName"_s : u"DsgRemarkName"_s, row.columns.value(0));
        }
    };
    m_brands->onColumnLeave = [this](int column) { return brandColumnLeave(column); };
    m_brands->onCommit = [this] { return commitBrandLine(); };
    m_brands->onAfterCommit = [this] {
        if (m_filters.any())
            clearFilters();
    };
    m_brands->onRowChange = [this] { brandRowChanged(); };
    m_brands->onKeyDown = [this](Key key) { return key == Key::Enter && brandEnter(); };
    m_brands->onGotFocus = [this] {
        if (m_filters.drug != m_builtFor.drug || m_filters.indication != m_builtFor.indication ||
            m_filters.group != m_builtFor.group || m_filters.company != m_builtFor.company)
            BuildBrandList();
    };

    auto& dosage = add<TextBox>(u"TxtDosage"_s);
    dosage.setMultiLine(true);
    dosage.setMaxLength(250);
    dosage.placeOnTab(u"SsTabMain"_s, 0);
    dosage.onValidate = [this] { return dosageLeave(); };

    const QStringList captions{u"Patient &History"_s, u"B&rand Info"_s, u"Brand S&ubstitutes"_s,
                               u"&Locate Brand  [ Search ]"_s, u"Chec&k Interaction"_s};
    for (int i = 0; i < captions.size(); ++i) {
        auto& b = add<Button>(u"CmdBrand"_s, i);
        b.setCaption(captions.at(i));
        b.onClick = [this, i] { brandButton(i); };
    }
    m_panel = std::make_unique<SafetyPanel>(*this);
    showSearchText();
}

// ---------------------------------------------------------------------------------------------------------
// The popup and its filters.

namespace {

std::vector<ListRow> BrandRows(Database& db, const BrandFilters& filters) {
    const Statement statement = BrandListStatement(filters);
    std::vector<ListRow> rows;
    for (const Row& row : db.select(statement.sql, statement.params))
        rows.push_back({QVariantList{row.value(u"Code"_s), row.value(u"DsgFmCode"_s)},
                        {row.text(u"Name"_s), row.text(u"DsgFmName"_s), row.text(u"Company"_s),
                         row.text(u"m_Dosage"_s)}});
    return rows;
}

} // namespace

// The unfiltered popup, every brand in every form, is read once and kept while no brand changes.
void FrmPrescription::BuildBrandList() {
    static QString keptVersion;
    static std::vector<ListRow> kept;
    std::vector<ListRow> rows;
    if (m_filters.any()) {
        rows = BrandRows(db(), m_filters);
    } else {
        const QString version =
            db().version({u"GenericName"_s, u"GenericDsgFm"_s, u"DosageForm"_s, u"Manufacturer"_s});
        if (version != keptVersion) {
            kept = BrandRows(db(), {});
            keptVersion = version;
        }
        rows = kept;
    }
    m_builtFor = m_filters;
    if (rows.empty() && m_filters.any())
        prompter().info(u"No Brand(s) Available Under the Specified Search Criteria."_s);
    m_brandList->setRows(std::move(rows));
}

void FrmPrescription::showSearchText() {
    const auto name = [this](const QString& combo, qint64 code) {
        return code > 0 ? qobject_cast<ComboBox*>(control(combo))->text().trimmed() : QString();
    };
    control(u"LblSearch"_s)
        ->setCaption(BrandSearchText(
            {name(u"CmbPharma"_s, m_filters.drug), name(u"CmbIndication"_s, m_filters.indication),
             name(u"CmbGroup"_s, m_filters.group), name(u"CmbCompany"_s, m_filters.company)}));
}

bool FrmPrescription::filterLeave(ComboBox& combo, qint64& code, const QString& message) {
    const QString text = combo.text().trimmed();
    const qint64 chosen = text.isEmpty() ? 0 : ChosenCode(combo);
    if (chosen < 0) {
        prompter().stop(message);
        return false;
    }
    code = chosen;
    showSearchText();
    return true;
}

// After a line is written the popup shows every brand again.
void FrmPrescription::clearFilters() {
    for (const Filter& f : Filters) {
        auto& combo = *qobject_cast<ComboBox*>(control(QString::fromUtf16(f.combo)));
        combo.setText({});
        combo.setCurrent(-1);
    }
    m_filters = {};
    BuildBrandList();
    showSearchText();
}

// ---------------------------------------------------------------------------------------------------------
// The line.

void FrmPrescription::pickBrand(const ListRow& row) {
    const qint64 brand = BrandOf(row);
    const qint64 form = FormOf(row);
    state().CurrentBrandCode = brand;
    state().CurrentDsgFmCode = form;
    m_brands->setValue(u"Code"_s, brand);
    m_brands->setValue(u"Name"_s, row.columns.value(0));
    m_brands->setValue(u"DsgFmCode"_s, form);
    m_brands->setValue(u"DsgFmName"_s, row.columns.value(1));
    m_brands->setValue(u"Dosage"_s, row.columns.value(3));
    qobject_cast<TextBox*>(control(u"TxtDosage"_s))->setText(row.columns.value(3));
    m_panel->showBrand(brand, row.columns.value(0));
}

bool FrmPrescription::brandColumnLeave(int column) {
    if (PresMode == 0)
        return true;
    switch (column) {
    case 1:
        return brandNameLeave();
    case 5:
        return symbolLeave();
    case 7:
        return remarkLeave();
    default:
        break;
    }
    if (!m_brands->text(u"Name"_s).trimmed().isEmpty() &&
        (m_brands->value(u"Code"_s).toLongLong() <= 0 || m_brands->value(u"DsgFmCode"_s).toLongLong() <= 0 ||
         m_brands->text(u"DsgFmName"_s).trimmed().isEmpty())) {
        state().CurrentBrandCode = 0;
        state().CurrentDsgFmCode = 0;
        prompter().stop(u"Incomplete Informations."_s);
        return false;
    }
    if (column == 8)
        qobject_cast<TextBox*>(control(u"TxtDosage"_s))->setText(m_brands->text(u"Dosage"_s));
    return true;
}

bool FrmPrescription::brandNameLeave() {
    const QString name = m_brands->text(u"Name"_s).trimmed();
    if (name.isEmpty()) {
        prompter().stop(u"Brand Name Cannot be Left Blank."_s);
        return false;
    }
    if (FindName(*m_brandList, name) < 0) {
        if (!prompter().ask(u"Brand Does Not Exist In List. Want to Continue ?"_s))
            return false;
        return newBrand(name);
    }
    const qint64 brand = state().CurrentBrandCode;
    const qint64 form = state().CurrentDsgFmCode;
    if (brand <= 0 || form <= 0 || m_brands->value(u"Code"_s).toLongLong() != brand) {
        prompter().stop(u"Invalid Brand Name."_s);
        return false;
    }
    const int found = FindBrandRow(*m_brandList, brand, form);
    if (found < 0 || !SameText(m_brandList->rows().at(found).columns.value(0), name) ||
        !SameText(m_brandList->rows().at(found).columns.value(1), m_brands->text(u"DsgFmName"_s))) {
        prompter().stop(u"Invalid Brand / Dosage Form."_s);
        return false;
    }
    return true;
}

// A name typed in full takes the code of its row, as a pick from the list does.
bool FrmPrescription::symbolLeave() {
    const QString name = m_brands->text(u"SymbolName"_s).trimmed();
    if (name.isEmpty()) {
        m_brands->setValue(u"SymbolCode"_s, 0);
        return true;
    }
    const auto& list = *qobject_cast<DropDown*>(control(u"SymbolDD"_s));
    const int found = FindName(list, name);
    if (found < 0) {
        prompter().stop(u"Invalid Dosage Symbol."_s);
        return false;
    }
    m_brands->setValue(u"SymbolCode"_s, list.rows().at(found).code);
    if (!db().exists(u"SELECT 1 FROM Symbols WHERE Code = ? AND Name = ?"_s,
                     {m_brands->value(u"SymbolCode"_s), name})) {
        prompter().stop(u"Invalid Dosage Symbol."_s);
        return false;
    }
    return true;
}

bool FrmPrescription::remarkLeave() {
    const QString name = m_brands->text(u"DsgRemarkName"_s).trimmed();
    if (name.isEmpty()) {
        m_brands->setValue(u"DsgRemarkCode"_s, 0);
        return true;
    }
    auto& list = *qobject_cast<DropDown*>(control(u"DsgRemarkDD"_s));
    const int found = FindName(list, name);
    if (found < 0) {
        if (!prompter().ask(u"Dosage Remark Does Not Exist In List. Want to Add the Same in List ?"_s)) {
            m_brands->setValue(u"DsgRemarkName"_s, QString());
            m_brands->setValue(u"DsgRemarkCode"_s, 0);
            return true;
        }
        const qint64 code = AddToList(db(), prompter(), u"DSGREMARK"_s, name);
        if (code == 0) {
            prompter().stop(u"Invalid Dosage Remark."_s);
            return false;
        }
        FillRows(db(), list, u"SELECT Code, Name FROM DsgRemark ORDER BY Name"_s);
        m_brands->setValue(u"DsgRemarkCode"_s, code);
        m_brands->setValue(u"DsgRemarkName"_s, name.toUpper());
        return true;
    }
    m_brands->setValue(u"DsgRemarkCode"_s, list.rows().at(found).code);
    if (!db().exists(u"SELECT 1 FROM DsgRemark WHERE Code = ? AND Name = ?"_s,
                     {m_brands->value(u"DsgRemarkCode"_s), name})) {
        prompter().stop(u"Invalid Dosage Remark."_s);
        m_brands->setValue(u"DsgRemarkName"_s, QString());
        return false;
    }
    return true;
}

// A brand the database does not know is added by the doctor, then stands in the popup like any other.
bool FrmPrescription::newBrand(const QString& name) {
    qint64 brand = 0;
    qint64 form = 0;
    process().openModal(
        u"FrmNewBrand"_s,
        [&name](Screen& dialog) { dialog.inputs.insert(u"GetBrandName"_s, name.trimmed().toUpper()); },
        [&brand, &form](Screen& dialog) {
            brand = dialog.outputs.value(u"GetNewBrandCode"_s).toLongLong();
            form = dialog.outputs.value(u"GetNewDsgCode"_s).toLongLong();
        });
    if (brand <= 0 || form <= 0)
        return false;
    clearFilters();
    const int found = FindBrandRow(*m_brandList, brand, form);
    if (found < 0) {
        prompter().stop(u"Invalid Brand / Dosage Form."_s);
        return false;
    }
    m_brandList->setCurrent(found);
    pickBrand(m_brandList->rows().at(found));
    return true;
}

BrandCheckContext FrmPrescription::checkContext() const {
    BrandCheckContext context;
    context.screen = const_cast<FrmPrescription*>(this);
    context.lines = u"TmpDet"_s;
    context.interactionSource = 0;
    context.allergies = u"TmpPresAllergy"_s;
    context.diseases = u"TmpDisease"_s;
    context.states = states;
    context.panel = m_panel.get();
    context.lineRowId = m_brands->onNewLine() ? 0 : m_brands->rowId(m_brands->currentRow());
    context.setBusy = [this](bool on) { const_cast<FrmPrescription*>(this)->m_busy = on; };
    return context;
}

bool FrmPrescription::runBrandChecks(qint64 brand, qint64 form, bool freshQuery, qint64 oldBrand) {
    return CheckBrandLine(checkContext(), brand, form, freshQuery, oldBrand);
}

bool FrmPrescription::commitBrandLine() {
    const qint64 brand = m_brands->value(u"Code"_s).toLongLong();
    const qint64 form = m_brands->value(u"DsgFmCode"_s).toLongLong();
    if (brand <= 0 || form <= 0) {
        state().CurrentBrandCode = 0;
        state().CurrentDsgFmCode = 0;
        return true;
    }
    const int row = m_brands->currentRow();
    const qint64 oldBrand = m_brands->onNewLine() ? 0 : m_brands->storedValue(row, u"Code"_s).toLongLong();
    if (!runBrandChecks(brand, form, false, oldBrand)) {
        state().CurrentBrandCode = 0;
        state().CurrentDsgFmCode = 0;
        setFocus(*m_brands);
        return false;
    }
    return true;
}

void FrmPrescription::brandRowChanged() {
    if (m_busy)
        return;
    const QString name = m_brands->text(u"Name"_s).trimmed();
    qobject_cast<TextBox*>(control(u"TxtDosage"_s))->setText(m_brands->text(u"Dosage"_s));
    if (name.isEmpty()) {
        state().CurrentBrandCode = 0;
        state().CurrentDsgFmCode = 0;
        m_panel->clear();
        return;
    }
    state().CurrentBrandCode = m_brands->value(u"Code"_s).toLongLong();
    state().CurrentDsgFmCode = m_brands->value(u"DsgFmCode"_s).toLongLong();
    m_panel->showBrand(state().CurrentBrandCode, name);
}

// Enter on an empty new line leaves the lines for Save; on the dosage it goes down a line, or on to a
// new one after the last.
bool FrmPrescription::brandEnter() {
    if (m_brands->onNewLine() && m_brands->text(u"Name"_s).trimmed().isEmpty()) {
        m_brands->deleteRow();
        moveFocus(control(u"CmdCtlButton"_s, 8));
        return true;
    }
    if (m_brands->currentColumn() != 8 || PresMode == 0)
        return false;
    m_brands->goToRow(m_brands->currentRow() + 1);
    return true;
}

// The dosage box is a larger view of the line's dosage; leaving it changed writes the line.
bool FrmPrescription::dosageLeave() {
    if (PresMode == 0 || m_brands->text(u"Name"_s).trimmed().isEmpty())
        return true;
    const QString text = qobject_cast<TextBox*>(control(u"TxtDosage"_s))->text().trimmed();
    if (text == m_brands->text(u"Dosage"_s))
        return true;
    m_brands->setValue(u"Dosage"_s, text);
    m_brands->commit();
    return true;
}

void FrmPrescription::brandButton(int index) {
    qobject_cast<TabStrip*>(control(u"SsTabMain"_s))->setCurrent(0);
    switch (index) {
    case History:
        if (state().CurrentPatientCode < 1) {
            prompter().info(u"Please Select the Patient First."_s);
            return;
        }
        return notAvailable();
    case BrandInfo:
        if (state().CurrentBrandCode > 0)
            notAvailable();
        return;
    case Substitutes:
        if (state().CurrentBrandCode > 0)
            takeBrandFrom(u"Substitute"_s);
        return;
    case Locate:
        return takeBrandFrom(u"Find_Genericname"_s);
    default:
        break;
    }
    if (db().scalar(u"SELECT COUNT(*) FROM TmpDet WHERE Code > 0"_s).toInt() < 2) {
        prompter().info(u"Not Enough Brands Prescribed For Interaction Check."_s);
        return;
    }
    const qint64 brand = state().CurrentBrandCode;
    const qint64 drug = state().CurrentPharmaCode;
    process().openModal(u"FrmIntDetails"_s, [](Screen& dialog) {
        dialog.inputs.insert(u"Source"_s, 0);
        dialog.inputs.insert(u"ShowAll"_s, true);
        dialog.inputs.insert(u"GetBrandCode"_s, 0);
    });
    state().CurrentBrandCode = brand;
    state().CurrentPharmaCode = drug;
}

// A brand chosen in the substitute list or the brand locator takes the line's place as if picked by hand,
// once it has passed the checks.
void FrmPrescription::takeBrandFrom(const QString& screenName) {
    if (!ScreenRegistry::instance().has(screenName))
        return notAvailable();
    const qint64 oldBrand = state().CurrentBrandCode;
    const qint64 oldForm = state().CurrentDsgFmCode;
    const bool selecting = PresMode > 0;
    process().openModal(screenName, [selecting](Screen& dialog) {
        dialog.inputs.insert(u"AllowSelect"_s, selecting);
        dialog.inputs.insert(u"ShowDosageForm"_s, selecting);
    });
    const qint64 brand = state().CurrentBrandCode > 0 ? state().CurrentBrandCode : oldBrand;
    const qint64 form = state().CurrentDsgFmCode > 0 ? state().CurrentDsgFmCode : oldForm;
    state().CurrentBrandCode = oldBrand;
    state().CurrentDsgFmCode = oldForm;
    if (!selecting || (brand == m_brands->value(u"Code"_s).toLongLong() &&
                       form == m_brands->value(u"DsgFmCode"_s).toLongLong()))
        return;
    const qint64 lineBrand =
        m_brands->onNewLine() ? 0 : m_brands->storedValue(m_brands->currentRow(), u"Code"_s).toLongLong();
    if (!runBrandChecks(brand, form, true, lineBrand))
        return;
    repositionBrand(brand, form);
}

bool FrmPrescription::repositionBrand(qint64 brand, qint64 form) {
    bool anyText = false;
    for (const Filter& f : Filters)
        anyText = anyText ||
                  !qobject_cast<ComboBox*>(control(QString::fromUtf16(f.combo)))->text().trimmed().isEmpty();
    if (m_filters.any() || anyText)
        clearFilters();
    const int found = FindBrandRow(*m_brandList, brand, form);
    if (found < 0) {
        prompter().stop(u"Invalid Brand / Dosage Form."_s);
        return true;
    }
    m_brandList->setCurrent(found);
    pickBrand(m_brandList->rows().at(found));
    return true;
}

} // namespace vantrel
