#pragma once

#include "core/Routines.h"
#include "core/Screen.h"
#include "patients/HistoryGrids.h"
#include "prescription/BrandCheck.h"
#include "prescription/BrandList.h"
#include "prescription/Safety.h"
#include "store/Database.h"

#include <array>
#include <optional>

namespace vantrel {

// The prescription screen: one prescription at a time over PresHead, its lists edited in staging tables
// and written by Save in one transaction, every brand line checked against the patient as it is written.
class FrmPrescription : public Screen {
    Q_OBJECT
public:
    explicit FrmPrescription(Process& process);

    void load() override;
    void activate() override;

    // 0 view, 1 new, 2 edit.
    int PresMode = 0;
    // The patient's states by SafeFieldCode: 1 Pregnancy, 2 Lactation, 3 Paediatrics, 4 Elderly, 5 Renal,
    // 6 Liver, 7 Pulmonary (index 0 unused).
    std::array<bool, 8> states{};

    // The popup of brands for the filters now set.
    void BuildBrandList();
    BrandFilters& brandFilters() { return m_filters; }

private:
    // Record lifecycle.
    void addControls();
    void addPatientControls();
    void addBrandControls();
    void addClinicalLists();
    void fillLists();
    void ShowCurrentPrescription();
    void showEmpty();
    void showAdvised(qint64 prescription);
    void clearScreen();
    void lockFields();
    void setMode(int mode);
    bool goTo(qint64 code);
    void Top();
    void Back();
    void Next();
    void Last();
    void New();
    void Edit();
    void Save();
    bool writePrescription(bool isNew);
    void Cancel();
    void Delete();
    bool CheckPrescriptionInUse();
    void Find();
    void notAvailable();
    bool goToNumber();
    bool presDateLeave();
    bool checkUpLeave();
    bool patientChosen();
    bool guardFocus(Control& control);
    void guard(Control& control);

    // Patient context.
    void selectPatient(qint64 patient);
    void FillPatientContext(const std::optional<Row>& patient, const QDate& onDate);
    void ClearPatientContext();
    bool patientLeave();
    void OfferLastPrescription();
    void patientButton(int index);
    void Set_Patient();
    void Set_EditPatient();
    bool lmpLeave();
    void DownloadPrescription(qint64 source, bool confirm, bool safety);
    void takeStates(const Row& head);
    void takePregnancy(const Row& head);
    void toggleState(int index);
    void showStates();

    // Complaints, diagnoses, procedures.
    bool clinicalNameLeave(int list);
    bool clinicalCommit(int list);
    bool clinicalRemarkLeave(int list);
    bool CheckDiseaseEntry(const Row& disease);
    QString activeStates() const;
    void loadAdvisedInvestigations();

    // Brand lines.
    void showSearchText();
    void clearFilters();
    bool filterLeave(ComboBox& combo, qint64& code, const QString& message);
    void pickBrand(const ListRow& row);
    bool brandColumnLeave(int column);
    bool brandNameLeave();
    bool symbolLeave();
    bool remarkLeave();
    bool commitBrandLine();
    void brandRowChanged();
    bool runBrandChecks(qint64 brand, qint64 form, bool freshQuery, qint64 oldBrand);
    bool repositionBrand(qint64 brand, qint64 form);
    bool newBrand(const QString& name);
    bool dosageLeave();
    bool brandEnter();
    void brandButton(int index);
    void takeBrandFrom(const QString& screenName);
    BrandCheckContext checkContext() const;

    Grid* m_brands = nullptr;
    DropDown* m_brandList = nullptr;
    std::unique_ptr<SafetyPanel> m_panel;
    std::unique_ptr<HistoryGrids> m_history;
    BrandFilters m_filters;
    BrandFilters m_builtFor;
    bool m_listBuilt = false;
    bool m_busy = false;
    bool m_diseasesChanged = false;
    qint64 m_patientOffered = 0;
    // The patient's age on the prescription's date, and the measure as it stood when its box was entered.
    DateDiff m_age{};
    QString m_measureShown;
    // The prescription the cursor stands on, and its row.
    qint64 m_shown = 0;
    Row m_row;
};

} // namespace vantrel
