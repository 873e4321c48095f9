// SPDX-License-Identifier: GPL-3.0-or-later
#include "iOS/Shared/PickerModel.h"

PickerModel::PickerModel(QObject *parent)
    : QAbstractListModel(parent)
{
}

PickerModel::PickerModel(const QList<PickerChoice> &choices, QObject *parent)
    : QAbstractListModel(parent)
    , m_choices(choices)
{
}

int PickerModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_choices.size());
}

QVariant PickerModel::data(const QModelIndex &index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid))
        return {};
    const PickerChoice &choice = m_choices.at(index.row());
    switch (role) {
    case TextRole:
        return choice.text;
    case DotRole:
        return choice.dot.isValid() ? choice.dot : QColor(Qt::transparent);
    default:
        return {};
    }
}

QHash<int, QByteArray> PickerModel::roleNames() const
{
    return {{TextRole, "text"}, {DotRole, "dot"}};
}

QStringList PickerModel::texts() const
{
    QStringList texts;
    for (const PickerChoice &choice : m_choices)
        texts.append(choice.text);
    return texts;
}

QList<QColor> PickerModel::dots() const
{
    QList<QColor> dots;
    for (const PickerChoice &choice : m_choices)
        dots.append(choice.dot.isValid() ? choice.dot : QColor(Qt::transparent));
    return dots;
}

void PickerModel::setChoices(const QList<PickerChoice> &choices)
{
    if (m_choices == choices)
        return;
    beginResetModel();
    m_choices = choices;
    endResetModel();
    Q_EMIT choicesChanged();
}
