#pragma once

#include "core/Process.h"

#include <QString>

namespace vantrel {

// The four filters of the brand popup: codes of PharmaName, Indication, GroupName and Manufacturer; 0 for
// none.
struct BrandFilters {
    qint64 drug = 0;
    qint64 indication = 0;
    qint64 group = 0;
    qint64 company = 0;
    bool any() const { return drug > 0 || indication > 0 || group > 0 || company > 0; }
};

// The statement of the brand popup for the filters: one row a brand in one dosage form, with its default
// dosage (the per-form dosage, else the brand's), ordered by name.
Statement BrandListStatement(const BrandFilters& filters);

// The names shown in the filters, empty when a filter is not set.
struct BrandFilterNames {
    QString drug;
    QString indication;
    QString group;
    QString company;
};

// What the popup now holds, in words, for the search label.
QString BrandSearchText(const BrandFilterNames& names);

} // namespace vantrel
