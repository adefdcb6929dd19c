#pragma once

#include <QImage>
#include <QSqlDatabase>
#include <QString>

namespace vantrel {

// Puts the delivered documents into a program folder: the hand-outs of data/documents/handouts into the
// hand-out folder (Bin$01.001), the special topics of data/documents/topics into its topic folder
// (HtpBin$1.001), and a header picture for each row of the delivered database's HotTopics. A file the
// folder already holds is left as it is, so that a clinic's own edits survive every rebuild.
bool InstallDocuments(const QString& dataDir, const QString& programDir, const QSqlDatabase& delivered,
                      QString* error);

// The header picture of a special topic: its title on a coloured band.
QImage DrawTopicHeader(const QString& title);

} // namespace vantrel
