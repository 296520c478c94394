#include "app/ListModel.h"

#include <QAbstractItemModelTester>
#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <random>

namespace brindle {
namespace {

struct Row {
    int id = 0;
    int value = 0;

    bool operator==(const Row&) const = default;
};

using Model = ListModel<Row, int>;

std::vector<Row> randomRows(std::mt19937& random) {
    std::vector<int> ids{0, 1, 2, 3, 4, 5, 6, 7, 8, 9};
    std::ranges::shuffle(ids, random);
    ids.resize(std::uniform_int_distribution<std::size_t>(0, ids.size())(random));
    std::vector<Row> rows;
    for (const int id : ids) rows.push_back({id, std::uniform_int_distribution(0, 1)(random)});
    return rows;
}

/// A view that knows only what the model tells it.
class Mirror {
public:
    explicit Mirror(const Model& model) : model_(model) {
        QObject::connect(&model, &Model::rowsInserted, [this](const QModelIndex&, int first, int last) {
            rows_.insert(rows_.begin() + first, model_.rows().begin() + first,
                         model_.rows().begin() + last + 1);
        });
        QObject::connect(&model, &Model::rowsRemoved, [this](const QModelIndex&, int first, int last) {
            rows_.erase(rows_.begin() + first, rows_.begin() + last + 1);
        });
        QObject::connect(&model, &Model::rowsMoved,
                         [this](const QModelIndex&, int from, int, const QModelIndex&, int to) {
                             std::rotate(rows_.begin() + to, rows_.begin() + from, rows_.begin() + from + 1);
                         });
        QObject::connect(&model, &Model::dataChanged,
                         [this](const QModelIndex& first, const QModelIndex& last) {
                             for (int row = first.row(); row <= last.row(); ++row) {
                                 const auto place = static_cast<std::size_t>(row);
                                 rows_[place] = model_.rows()[place];
                                 ++changes;
                             }
                         });
        QObject::connect(&model, &Model::modelReset, [] { ADD_FAILURE() << "views lose their place"; });
    }

    [[nodiscard]] const std::vector<Row>& rows() const { return rows_; }
    int changes = 0;

private:
    const Model& model_;
    std::vector<Row> rows_;
};

TEST(ListModel, TellsViewsExactlyWhatIsDifferent) {
    Model model([](const Row& row) { return row.id; }, {{"id", [](const Row& row) { return row.id; }},
                                                        {"value", [](const Row& row) { return row.value; }}});
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    Mirror mirror(model);
    std::mt19937 random(3);
    for (int round = 0; round < 500; ++round) {
        const auto before = model.rows();
        const auto rows = randomRows(random);
        mirror.changes = 0;
        model.replaceRows(rows);
        ASSERT_EQ(model.rows(), rows);
        ASSERT_EQ(mirror.rows(), rows);
        const auto changed = std::ranges::count_if(rows, [&](const Row& row) {
            const auto old = std::ranges::find(before, row.id, &Row::id);
            return old != before.end() && old->value != row.value;
        });
        ASSERT_EQ(mirror.changes, changed);
    }
    model.replaceRows({{7, 70}});
    EXPECT_EQ(model.data(model.index(0), model.roleNames().key("value")), 70);
    EXPECT_FALSE(model.data(model.index(0), Qt::DisplayRole).isValid());
}

TEST(ListModel, ARefilledListKeepsAsManyDelegatesAsItNeeds) {
    Model model([](const Row& row) { return row.id; }, {{"id", [](const Row& row) { return row.id; }}});
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    Mirror mirror(model);
    std::mt19937 random(5);
    for (int round = 0; round < 200; ++round) {
        const std::size_t before = model.rows().size();
        const auto rows = randomRows(random);
        mirror.changes = 0;
        model.refill(rows);
        ASSERT_EQ(model.rows(), rows);
        ASSERT_EQ(mirror.rows(), rows);
        ASSERT_EQ(mirror.changes, static_cast<int>(std::min(before, rows.size())));
    }
}

}  // namespace
}  // namespace brindle
