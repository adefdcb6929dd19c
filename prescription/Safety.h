#pragma once

#include <QString>
#include <vector>

namespace vantrel {

class Button;
class Database;
class Label;
class Screen;
class TextBox;

// One group of a brand's safety rows: the number of its drugs with one status in one patient state.
struct SafetyGroup {
    int field = 0;  // SafeFieldCode, 1 Pregnancy .. 7 Pulmonary Insufficiency
    int status = 0; // SafetyCode, 1 Safe .. 6 Not Known
    int count = 0;
};
using BrandSafety = std::vector<SafetyGroup>;

// The safety rows of a brand's drugs grouped by state and status. Read once for a brand; every state is
// classified from these rows in memory.
BrandSafety ReadBrandSafety(Database& db, qint64 brand);

// The class of a brand in one state; the numbers are the status codes the class is named after.
enum class SafetyClass { None = 0, Safe = 1, Unsafe = 2, Uncertain = 3, Careful = 4 };

struct SafetyVerdict {
    SafetyClass cls = SafetyClass::None;
    QString caption; // "Safe", "Un-Safe", "Un-Certain", "Carefull" or "Not Available"
    QString text;    // "Un-Safe in One Drug And Not Used in All Drugs", ...
};

// Classifies a brand in one state (SafeFieldCode 1 to 7) from its grouped rows.
SafetyVerdict ClassifyBrandSafety(const BrandSafety& rows, int field);
// The class a status caption of the brand panel stands for.
SafetyClass SafetyClassOfCaption(const QString& caption);

// The panel row (0 to 6) that shows a state (SafeFieldCode 1 to 7).
int SafetyPanelRow(int field);
// The state's name in the safety questions: "Pregnancy", "Lactation", "Paediatrics", ...
QString SafetyStateName(int field);

// The brand and drug safety panels of a screen: seven rows each, in the order Paediatrics, Elderly,
// Pregnancy, Lactation, Liver, Renal, Pulmonary, coloured by class, with stepping through the brand's
// drugs. The prescription screen, the ready-made screen and the safety viewer all show these.
class SafetyPanel {
public:
    // Adds the panels' controls to the screen.
    explicit SafetyPanel(Screen& screen);

    // Both panels blank, their titles reset, stepping disabled.
    void clear();
    // The brand panel for a brand (0 for none), and its drugs for stepping.
    void showBrand(qint64 brand, const QString& name);
    // One drug alone, as the drug viewer shows it.
    void showSingleDrug(qint64 drug);
    // The drug panel in front of the brand panel, or back.
    void showDrugPanel(bool on);

    qint64 brand() const { return m_brand; }
    // The class the brand panel now shows for a state (SafeFieldCode 1 to 7).
    SafetyClass shownClass(int field) const;

private:
    void showDrug();
    void step(int by);

    Screen& m_screen;
    qint64 m_brand = 0;
    std::vector<std::pair<qint64, QString>> m_drugs;
    int m_drug = -1;
};

} // namespace vantrel
