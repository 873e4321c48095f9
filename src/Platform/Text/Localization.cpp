// SPDX-License-Identifier: GPL-3.0-or-later
#include "Platform/Text/Localization.h"

#include <QHash>
#include <QJsonDocument>
#include <QJsonObject>

namespace {
QHash<QByteArray, QString> &translations()
{
    static QHash<QByteArray, QString> table;
    return table;
}
}

QString localized(const char *key, const QString &defaultText)
{
    return translations().value(QByteArray::fromRawData(key, qsizetype(qstrlen(key))), defaultText);
}

QString formatted(const QString &format, std::initializer_list<FormatArgument> arguments)
{
    QString result;
    auto next = arguments.begin();
    for (qsizetype i = 0; i < format.size();) {
        const QStringView rest = QStringView(format).mid(i);
        if (rest.startsWith(u"%%")) {
            result += u'%';
            i += 2;
        } else if (next != arguments.end() && rest.startsWith(u"%@") && std::holds_alternative<QString>(*next)) {
            result += std::get<QString>(*next++);
            i += 2;
        } else if (next != arguments.end() && rest.startsWith(u"%lld") && std::holds_alternative<qint64>(*next)) {
            result += QString::number(std::get<qint64>(*next++));
            i += 4;
        } else {
            result += format.at(i++);
        }
    }
    return result;
}

void setTranslationTable(const QByteArray &json)
{
    translations().clear();
    const QJsonObject table = QJsonDocument::fromJson(json).object();
    for (auto it = table.begin(); it != table.end(); ++it)
        if (it->isString())
            translations().insert(it.key().toUtf8(), it->toString());
}
