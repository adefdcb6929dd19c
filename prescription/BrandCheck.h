#pragma once

#include <QString>
#include <array>
#include <functional>

namespace vantrel {

class SafetyPanel;
class Screen;

// What the checks of a brand line know of the screen that writes it: the prescription screen and the
// ready-made screen differ only in their staging tables and in having a patient.
struct BrandCheckContext {
    Screen* screen = nullptr;
    // Staging table of the brand lines ("TmpDet" or "TmpReadyDet") and the interaction dialog's source for
    // it (0 or 1).
    QString lines;
    int interactionSource = 0;
    // Staged allergies and diagnoses; an empty name leaves the check out.
    QString allergies;
    QString diseases;
    // The patient's states by SafeFieldCode 1 to 7 (index 0 unused).
    std::array<bool, 8> states{};
    // The panel showing the brand picked, for a check that repeats what it shows.
    const SafetyPanel* panel = nullptr;
    // The staging row being changed, 0 for a new line: a duplicate at that row is the line itself.
    qint64 lineRowId = 0;
    // Marks the screen busy while the interaction dialog shows, so that its grid events do nothing.
    std::function<void(bool)> setBusy;
};

// The checks a brand line passes before it is written, in their order: duplicate, safety, substitute,
// interaction, drug already present, allergy, contra-indication. Each but the first is a question the
// doctor may overrule; a No stops the rest. True accepts the line.
bool CheckBrandLine(const BrandCheckContext& context, qint64 brand, qint64 form, bool freshQuery,
                    qint64 oldBrand);

// The safety questions for a brand, from the database (fresh) or from the panel.
bool CheckBrandSafety(const BrandCheckContext& context, qint64 brand, bool fromPanel);
bool CheckSubstitute(const BrandCheckContext& context, qint64 brand, qint64 oldBrand);
bool CheckInteraction(const BrandCheckContext& context, qint64 brand, qint64 oldBrand);
bool CheckDrugPresent(const BrandCheckContext& context, qint64 brand, qint64 oldBrand);
bool CheckAllergy(const BrandCheckContext& context, qint64 brand);
bool CheckContraIndication(const BrandCheckContext& context, qint64 brand);

} // namespace vantrel
