#pragma once

#include <QAbstractListModel>
#include <QByteArray>
#include <QHash>
#include <QVariant>
#include <algorithm>
#include <functional>
#include <iterator>
#include <unordered_map>
#include <utility>
#include <vector>

namespace brindle {

/// A list for views, whose rows keep their identity: replacing the rows tells the views only what is
/// different, so that a selection, a scrolled place and a delegate's state outlive a reload.
/// Thread: main.
template <class Row, class Key>
class ListModel : public QAbstractListModel {
public:
    struct Role {
        QByteArray name;
        std::function<QVariant(const Row&)> value;
    };

    /// `keyOf` tells rows apart; no two rows of a list have the same.
    ListModel(std::function<Key(const Row&)> keyOf, std::vector<Role> roles, QObject* parent = nullptr)
        : QAbstractListModel(parent), keyOf_(std::move(keyOf)), roles_(std::move(roles)) {}

    [[nodiscard]] const std::vector<Row>& rows() const { return rows_; }

    void replaceRows(std::vector<Row> rows) {
        removeRowsNotIn(rows);
        for (std::size_t i = 0; i < rows.size(); ++i) put(std::move(rows[i]), i);
    }

    /// Puts other rows into the places of these, for a list that has nothing in common with the one before:
    /// the views keep their delegates and only fill them anew.
    void refill(std::vector<Row> rows) {
        const std::size_t kept = std::min(rows.size(), rows_.size());
        if (kept < rows_.size()) {
            beginRemoveRows({}, static_cast<int>(kept), static_cast<int>(rows_.size()) - 1);
            rows_.resize(kept);
            endRemoveRows();
        }
        std::move(rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(kept), rows_.begin());
        if (kept > 0) Q_EMIT dataChanged(index(0), index(static_cast<int>(kept) - 1));
        if (kept < rows.size()) {
            beginInsertRows({}, static_cast<int>(kept), static_cast<int>(rows.size()) - 1);
            rows_.insert(rows_.end(), std::move_iterator(rows.begin() + static_cast<std::ptrdiff_t>(kept)),
                         std::move_iterator(rows.end()));
            endInsertRows();
        }
    }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : static_cast<int>(rows_.size());
    }

    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        const auto place = static_cast<std::size_t>(role - Qt::UserRole);
        if (!checkIndex(index, CheckIndexOption::IndexIsValid) || role < Qt::UserRole ||
            place >= roles_.size())
            return {};
        return roles_[place].value(rows_[static_cast<std::size_t>(index.row())]);
    }

    [[nodiscard]] QHash<int, QByteArray> roleNames() const override {
        QHash<int, QByteArray> names;
        for (std::size_t i = 0; i < roles_.size(); ++i)
            names.insert(Qt::UserRole + static_cast<int>(i), roles_[i].name);
        return names;
    }

private:
    [[nodiscard]] auto at(std::size_t place) { return rows_.begin() + static_cast<std::ptrdiff_t>(place); }

    void removeRowsNotIn(const std::vector<Row>& wanted) {
        std::unordered_map<Key, bool> kept;
        for (const Row& row : wanted) kept.emplace(keyOf_(row), true);
        for (std::size_t end = rows_.size(); end > 0;) {
            std::size_t begin = end;
            while (begin > 0 && !kept.contains(keyOf_(rows_[begin - 1]))) --begin;
            if (begin < end) {
                beginRemoveRows({}, static_cast<int>(begin), static_cast<int>(end) - 1);
                rows_.erase(at(begin), at(end));
                endRemoveRows();
            }
            end = begin > 0 ? begin - 1 : 0;
        }
    }

    /// Every row before `place` is in its place.
    void put(Row row, std::size_t place) {
        const Key key = keyOf_(row);
        const auto found =
            std::find_if(at(place), rows_.end(), [&](const Row& other) { return keyOf_(other) == key; });
        const auto here = static_cast<int>(place);
        if (found == rows_.end()) {
            beginInsertRows({}, here, here);
            rows_.insert(at(place), std::move(row));
            endInsertRows();
            return;
        }
        if (found != at(place)) {
            const auto from = static_cast<int>(found - rows_.begin());
            beginMoveRows({}, from, from, {}, here);
            std::rotate(at(place), found, found + 1);
            endMoveRows();
        }
        if (rows_[place] == row) return;
        rows_[place] = std::move(row);
        Q_EMIT dataChanged(index(here), index(here));
    }

    std::function<Key(const Row&)> keyOf_;
    std::vector<Role> roles_;
    std::vector<Row> rows_;
};

}  // namespace brindle
