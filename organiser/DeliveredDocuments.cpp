#include "organiser/DeliveredDocuments.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFont>
#include <QLinearGradient>
#include <QPainter>
#include <QSqlError>
#include <QSqlQuery>

using namespace Qt::StringLiterals;

namespace vantrel {

namespace {

bool fail(QString* error, const QString& text) {
    if (error)
        *error = text;
    return false;
}

// Copies every file of one folder into another, leaving alone the files the target already holds.
bool copyMissing(const QString& from, const QString& to, QString* error) {
    if (!QDir().mkpath(to))
        return fail(error, to + u": the folder can not be made"_s);
    for (const QFileInfo& file : QDir(from).entryInfoList(QDir::Files, QDir::Name)) {
        const QString target = QDir(to).filePath(file.fileName());
        if (QFileInfo::exists(target))
            continue;
        if (!QFile::copy(file.filePath(), target))
            return fail(error, target + u": the file can not be written"_s);
    }
    return true;
}

} // namespace

QImage DrawTopicHeader(const QString& title) {
    QImage image(900, 120, QImage::Format_RGB32);
    QPainter p(&image);
    QLinearGradient band(0, 0, image.width(), 0);
    band.setColorAt(0, QColor(0, 92, 120));
    band.setColorAt(1, QColor(0, 150, 136));
    p.fillRect(image.rect(), band);
    p.setRenderHint(QPainter::TextAntialiasing);
    p.setPen(Qt::white);
    p.setFont(QFont(u"DejaVu Sans"_s, 30, QFont::Bold));
    p.drawText(image.rect().adjusted(30, 0, -30, -20), Qt::AlignLeft | Qt::AlignVCenter, title);
    p.setFont(QFont(u"DejaVu Sans"_s, 12));
    p.drawText(image.rect().adjusted(32, 0, -30, -12), Qt::AlignLeft | Qt::AlignBottom, u"Special Topics"_s);
    p.end();
    return image;
}

bool InstallDocuments(const QString& dataDir, const QString& programDir, const QSqlDatabase& delivered,
                      QString* error) {
    const QDir data(dataDir);
    const QString handOuts = QDir(programDir).filePath(u"Bin$01.001"_s);
    const QString topics = QDir(handOuts).filePath(u"HtpBin$1.001"_s);
    if (!copyMissing(data.filePath(u"documents/handouts"_s), handOuts, error) ||
        !copyMissing(data.filePath(u"documents/topics"_s), topics, error))
        return false;
    QSqlQuery query(delivered);
    if (!query.exec(u"SELECT TopicName, HeaderImg FROM HotTopics ORDER BY MenuName"_s))
        return fail(error, u"HotTopics: "_s + query.lastError().text());
    while (query.next()) {
        const QString title = query.value(0).toString();
        const QString image = query.value(1).toString().trimmed();
        if (image.isEmpty())
            return fail(error, u"HotTopics: the topic \"%1\" names no header picture"_s.arg(title));
        const QString target = QDir(topics).filePath(image);
        if (QFileInfo::exists(target))
            continue;
        if (!DrawTopicHeader(title).save(target))
            return fail(error, target + u": the picture can not be written"_s);
    }
    return true;
}

} // namespace vantrel
