#pragma once

#include <QList>
#include <QString>

namespace vantrel {

class Database;

// The code of the row of a master whose trimmed name in capitals is the word, added when there is none;
// 0 when it can not be added.
qint64 EnsureSentinel(Database& db, const QString& table, const QString& word, const QString& groupCode = {},
                      qint64 group = 0);

// The drug NONE that a brand added from a prescription is made of: safe in every state, with NONE as its
// indication, contra-indication, side effect and special care. Made once, in its own transaction; its
// code, or 0.
qint64 EnsureNoneDrug(Database& db);

// What a new brand is made of: its name, composition, dosage and manufacturer, its forms and the form
// prescribed, and the sentinels it points to until the brand master completes it.
struct NewBrand {
    QString name;
    QString composition;
    QString dosage;
    qint64 company = 0;
    QList<qint64> forms;
    qint64 prescribedForm = 0;
    qint64 drug = 0;
    qint64 group = 0;
    qint64 subGroup = 0;
};

// Adds the brand in one transaction, unless a brand of that name exists; the brand's code (the existing
// one when it exists), or 0 when nothing could be written.
qint64 AddNewBrand(Database& db, const NewBrand& brand);

} // namespace vantrel
