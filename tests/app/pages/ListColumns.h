#pragma once

#include <QAbstractListModel>
#include <QByteArray>
#include <QVariant>
#include <string>
#include <vector>

namespace brindle {

/// What the rows of a list have in one role.
[[nodiscard]] inline std::vector<QVariant> column(const QAbstractListModel& list, const QByteArray& role) {
    std::vector<QVariant> values;
    for (int row = 0; row < list.rowCount(); ++row)
        values.push_back(list.data(list.index(row), list.roleNames().key(role, -1)));
    return values;
}

[[nodiscard]] inline std::vector<std::string> texts(const QAbstractListModel& list, const QByteArray& role) {
    std::vector<std::string> values;
    for (const QVariant& value : column(list, role)) values.push_back(value.toString().toStdString());
    return values;
}

[[nodiscard]] inline std::vector<double> numbers(const QAbstractListModel& list, const QByteArray& role) {
    std::vector<double> values;
    for (const QVariant& value : column(list, role)) values.push_back(value.toDouble());
    return values;
}

}  // namespace brindle
