#include "app/pages/ExplorerModel.h"

#include "app/pages/ActivityTexts.h"
#include "app/pages/PageText.h"
#include "model/NumberText.h"
#include "model/TextSearch.h"
#include "model/Translation.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

namespace brindle {
namespace {

/// Until then the rows of the period before are less of a disturbance than none.
constexpr std::chrono::milliseconds patience{300};

bool liesBelow(const FolderRef& folder, const std::optional<FolderRef>& above) {
    if (!above) return true;
    const FolderPath& path = above->components;
    return folder.locationID == above->locationID && folder.components.size() >= path.size() &&
           std::equal(path.begin(), path.end(), folder.components.begin());
}

/// The same list, on whatever page.
bool isSameList(ExplorerState a, const ExplorerState& b) {
    a.page = b.page;
    return a == b;
}

QString rowsTextOf(const ExplorerSection& section) {
    if (section.pages < 2) return {};
    return pageText(translated("Rows {0} to {1} of {2}"),
                    groupedNumber(static_cast<std::int64_t>(section.firstRow) + 1),
                    groupedNumber(static_cast<std::int64_t>(section.firstRow + section.rowsShown)),
                    groupedNumber(static_cast<std::int64_t>(section.rows)));
}

}  // namespace

ExplorerModel::ExplorerModel(AppModel& model, QObject* parent)
    : QObject(parent),
      model_(model),
      latest_([this](const std::shared_ptr<const ExplorerAnswer>& answer) { take(answer); },
              [this](const std::exception& /*error*/) { setFailed(); }) {
    patience_.setSingleShot(true);
    patience_.setInterval(patience);
    connect(&patience_, &QTimer::timeout, this, [this] {
        isLoading_ = true;
        rows_->replaceRows({});
        Q_EMIT answerChanged();
    });
    const Selection* selection = model.selection();
    connect(selection, &Selection::explorerChanged, this, [this] {
        updateCrumbs();
        Q_EMIT stateChanged();
        ask();
    });
    for (const auto changed : {&Selection::periodChanged, &Selection::scopeChanged})
        connect(selection, changed, this, &ExplorerModel::awaitPeriod);
    connect(selection, &Selection::scopeChanged, this, &ExplorerModel::updateCrumbs);
    connect(selection, &Selection::searchFocusRequested, this, &ExplorerModel::searchFocusRequested);
    connect(&model, &AppModel::historyChanged, this, [this] {
        leaveUnknownLocation();
        updateCrumbs();
    });
    connect(&model, &AppModel::detailsChanged, this, &ExplorerModel::ask);
    connect(&model, &AppModel::detailsFailed, this, &ExplorerModel::setFailed);
    updateCrumbs();
    awaitPeriod();
    if (model.dayChangesRevision() > 0) ask();
}

QString ExplorerModel::search() const {
    return QString::fromStdString(state().search);
}

void ExplorerModel::setSearch(const QString& search) {
    change([&](ExplorerState& state) { state.search = search.toStdString(); });
}

void ExplorerModel::setMode(int mode) {
    change([&](ExplorerState& state) { state.mode = static_cast<ExplorerMode>(mode); });
}

void ExplorerModel::setDirection(int direction) {
    change([&](ExplorerState& state) { state.direction = static_cast<DirectionFilter>(direction); });
}

void ExplorerModel::setSort(int sort) {
    change([&](ExplorerState& state) { state.sort = static_cast<FileSort>(sort); });
}

QStringList ExplorerModel::modes() const {
    return {translated("Folders"), translated("Files")};
}

QStringList ExplorerModel::directions() const {
    return {translated("All changes"), translated("Added"), translated("Freed")};
}

QStringList ExplorerModel::sorts() const {
    return {translated("Largest first"), translated("Newest first"), translated("By name")};
}

bool ExplorerModel::isFiltered() const {
    return state().direction != DirectionFilter::all || !TextSearch(state().search, "en").isEmpty();
}

QString ExplorerModel::insideText() const {
    return answer_->recorded.rows > 0 ? totalsText(answer_->recorded.inside) : QString();
}

QString ExplorerModel::passingText() const {
    if (!isFiltered() || isLoading_) return {};
    return pageText(translated("Matching: {}"), totalsText(answer_->recorded.passing).toStdString());
}

QString ExplorerModel::rowsText() const {
    return rowsTextOf(answer_->recorded);
}

QString ExplorerModel::estimatesText() const {
    const ChangeTotals& totals = answer_->estimated.inside;
    if (answer_->estimated.rows == 0) return {};
    return pageText(translatedCount("About {0} in {1} file, from file dates. Not part of the figures above.",
                                    "About {0} in {1} files, from file dates. Not part of the figures above.",
                                    totals.count),
                    byteAmount(totals.added), groupedNumber(totals.count));
}

QString ExplorerModel::estimatesRowsText() const {
    return rowsTextOf(answer_->estimated);
}

bool ExplorerModel::isAnswered() const {
    const DetailsRequest& request = answer_->request;
    const Selection& selection = *model_.selection();
    return request.first == selection.firstDay() && request.last == selection.day() &&
           request.scope == selection.scope();
}

QString ExplorerModel::emptySentence() const {
    if (hasFailed_) return translated("The changes couldn't be read.");
    if (isLoading_) return translated("Reading the changes…");
    if (!rows_->rows().empty() || !isAnswered()) return {};
    if (isFiltered()) return translated("No changes match these filters.");
    if (state().folder && (answer_->recordedTotals.count > 0 || answer_->estimatedTotals.count > 0))
        return translated("Nothing changed in this folder.");
    const Selection& selection = *model_.selection();
    const PeriodOf period{model_.history(), selection.scope(), selection.firstDay(), selection.day(),
                          model_.settings()->showsEstimates()};
    const QString gap = gapSentence(period, model_.calendar(), model_.isChecking());
    return gap.isEmpty() ? QString(translated("Nothing changed.")) : gap;
}

QString ExplorerModel::emptyActionText() const {
    if (hasFailed_ || isLoading_ || !rows_->rows().empty() || !isAnswered()) return {};
    if (isFiltered()) return translated("Clear filters");
    if (canGoUp() && (answer_->recordedTotals.count > 0 || answer_->estimatedTotals.count > 0))
        return translated("Show all folders");
    return {};
}

void ExplorerModel::followEmptyAction() {
    if (isFiltered())
        change([](ExplorerState& state) {
            state.search.clear();
            state.direction = DirectionFilter::all;
        });
    else
        openCrumb(0);
}

void ExplorerModel::setCurrentRow(int row) {
    if (std::exchange(currentRow_, row) != row) Q_EMIT currentRowChanged();
}

void ExplorerModel::setScroll(double scroll) {
    if (std::exchange(scroll_, scroll) != scroll) Q_EMIT scrollChanged();
}

bool ExplorerModel::takeSearchFocus() {
    const int asked = model_.selection()->searchFocusRequest();
    return std::exchange(searchFocusTaken_, asked) != asked;
}

void ExplorerModel::open(int row) {
    if (row < 0 || std::cmp_greater_equal(row, rows_->rows().size())) return;
    const ExplorerRow& opened = rows_->rows()[static_cast<std::size_t>(row)];
    if (!opened.isFolder) return;
    change([folder = opened.folder](ExplorerState& state) { state.folder = folder; });
}

void ExplorerModel::goUp() {
    if (canGoUp()) openCrumb(static_cast<int>(crumbs_->rows().size()) - 2);
}

void ExplorerModel::openCrumb(int place) {
    if (place < 0 || std::cmp_greater_equal(place, crumbs_->rows().size())) return;
    change([folder = crumbs_->rows()[static_cast<std::size_t>(place)].folder](ExplorerState& state) {
        state.folder = folder;
    });
}

void ExplorerModel::turnPage(int pages) {
    const int page = std::clamp(answer_->recorded.page + pages, 0, answer_->recorded.pages - 1);
    ExplorerState next = state();
    next.page = page;
    model_.selection()->setExplorer(std::move(next));
}

void ExplorerModel::turnEstimatesPage(int pages) {
    estimatesPage_ = std::clamp(answer_->estimated.page + pages, 0, answer_->estimated.pages - 1);
    ask();
}

/// Another list begins where the user left it, or at its first page.
void ExplorerModel::change(const std::function<void(ExplorerState&)>& how) {
    ExplorerState next = state();
    how(next);
    if (isSameList(next, state())) return;
    rememberPlace();
    const ExplorerPlace place = places_.of(next).value_or(ExplorerPlace());
    next.page = place.page;
    estimatesPage_ = place.estimatesPage;
    model_.selection()->setExplorer(std::move(next));
}

void ExplorerModel::rememberPlace() {
    const auto& rows = rows_->rows();
    if (rows.empty() || !isAnswered()) return;
    const auto current =
        static_cast<std::size_t>(std::clamp<std::ptrdiff_t>(currentRow_, 0, std::ssize(rows) - 1));
    places_.keep(answer_->state, {.page = answer_->recorded.page,
                                  .estimatesPage = answer_->estimated.page,
                                  .row = rows[current].key,
                                  .scroll = scroll_});
}

void ExplorerModel::restorePlace(const std::optional<FolderRef>& from) {
    const auto& rows = rows_->rows();
    const auto place = places_.of(answer_->state);
    const auto found = std::ranges::find_if(rows, [&](const ExplorerRow& row) {
        if (place) return row.key == place->row;
        return from && row.isFolder && liesBelow(*from, row.folder);
    });
    const bool isThere = place && place->page == answer_->recorded.page;
    setCurrentRow(found == rows.end() ? 0 : static_cast<int>(found - rows.begin()));
    setScroll(isThere ? place->scroll : 0);
    Q_EMIT placeRestored();
}

void ExplorerModel::ask() {
    if (model_.dayChangesRevision() == 0) return;
    ExplorerQuestion question{.details = model_.sharedDetails(),
                              .state = state(),
                              .estimatesPage = estimatesPage_,
                              .locations = model_.history().locations,
                              .calendar = model_.calendar()};
    latest_.ask([pages = pages_, question = std::move(question)] {
        return std::make_shared<const ExplorerAnswer>(pages->answer(question));
    });
}

void ExplorerModel::take(const std::shared_ptr<const ExplorerAnswer>& answer) {
    const bool isOtherList = !isSameList(answer->state, answer_->state) ||
                             answer->request.first != answer_->request.first ||
                             answer->request.last != answer_->request.last;
    const bool isOtherPage = answer->recorded.page != answer_->recorded.page;
    const std::optional<FolderRef> from = answer_->state.folder;
    if (isOtherList) rememberPlace();
    answer_ = answer;
    if (isAnswered()) {
        patience_.stop();
        isLoading_ = false;
    }
    hasFailed_ = false;
    // A heading between the kinds moves only with the rows that it stands between.
    const bool hasHeading = answer->estimated.rows > 0 || std::exchange(hadHeading_, false);
    hadHeading_ = answer->estimated.rows > 0;
    if ((isOtherList || isOtherPage) && !hasHeading)
        rows_->refill(answer->rows);
    else
        rows_->replaceRows(answer->rows);
    if (isOtherList) {
        restorePlace(from);
    } else if (isOtherPage) {
        setCurrentRow(0);
        setScroll(0);
        Q_EMIT placeRestored();
    }
    Q_EMIT answerChanged();
}

void ExplorerModel::updateCrumbs() {
    crumbs_->replaceRows(crumbsTo(state().folder, model_.selection()->scope(), model_.history().locations));
    Q_EMIT stateChanged();
}

/// The history that is shown now may be another one.
void ExplorerModel::leaveUnknownLocation() {
    const auto& locations = model_.history().locations;
    const auto& folder = state().folder;
    if (folder && std::ranges::find(locations, folder->locationID, &TrackedLocation::id) == locations.end())
        change([](ExplorerState& state) { state.folder.reset(); });
}

void ExplorerModel::awaitPeriod() {
    places_.forget();
    estimatesPage_ = 0;
    if (!isAnswered() && !patience_.isActive()) patience_.start();
}

void ExplorerModel::setFailed() {
    patience_.stop();
    isLoading_ = false;
    hasFailed_ = true;
    rows_->replaceRows({});
    Q_EMIT answerChanged();
}

}  // namespace brindle
