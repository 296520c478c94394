#include "app/pages/ExplorerPages.h"

#include "analysis/DaySentence.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace brindle {
namespace {

/// Appends the page's rows of one kind.
ExplorerSection addPage(std::vector<ExplorerRow>& rows, const ExplorerCache::Output& output,
                        ExplorerMode mode, int page, ChangeSource source, ExplorerRowMaker& maker) {
    const auto& folders = output.level.folders;
    const ChosenChanges& files = mode == ExplorerMode::folders ? output.level.files : output.files;
    ExplorerSection section{.passing = output.filteredTotals,
                            .inside = mode == ExplorerMode::folders ? output.level.totals : totalsOf(files),
                            .rows = folders.size() + files.size()};
    section.pages = static_cast<int>(section.rows == 0 ? 1 : (section.rows - 1) / filesOfPage + 1);
    section.page = std::clamp(page, 0, section.pages - 1);
    section.firstRow = static_cast<std::size_t>(section.page) * filesOfPage;
    section.rowsShown = std::min(filesOfPage, section.rows - section.firstRow);

    const std::int64_t largest = folders.empty() ? 0 : folders.front().totals.volume();
    for (std::size_t i = section.firstRow; i < section.firstRow + section.rowsShown; ++i)
        rows.push_back(i < folders.size() ? maker.row(folders[i], largest, source)
                                          : maker.row(*files[i - folders.size()]));
    return section;
}

ChangeTotals sumOf(const std::vector<FileChange>& changes) {
    ChangeTotals totals;
    for (const FileChange& change : changes) totals.add(change);
    return totals;
}

std::string explanationOf(const ExplorerQuestion& question, const Moves& moves) {
    const Details& details = *question.details;
    if (details.changes.empty()) return {};
    std::vector<TrackedLocation> locations;
    std::ranges::copy_if(
        question.locations, std::back_inserter(locations),
        [&](const TrackedLocation& location) { return details.request.scope.holds(location.id); });
    const std::string sentence = changeSentence(details.changes, locations, ChangeSource::measured);
    return moves.empty() ? sentence : sentence + " " + moveSentence(moves);
}

}  // namespace

void ExplorerPages::take(const ExplorerQuestion& question) {
    if (details_ == question.details) return;
    details_ = question.details;
    ++dataKey_;
    recordedTotals_ = sumOf(details_->changes);
    estimatedTotals_ = sumOf(details_->estimates);
    moves_ = Moves(details_->changes);
    explanation_ = explanationOf(question, moves_);
}

ExplorerAnswer ExplorerPages::answer(const ExplorerQuestion& question) {
    take(question);
    const DetailsRequest& request = details_->request;
    ExplorerAnswer answer{.request = request,
                          .state = question.state,
                          .recordedTotals = recordedTotals_,
                          .estimatedTotals = estimatedTotals_,
                          .explanation = explanation_};
    ExplorerState listed = question.state;
    listed.page = 0;  // the lists are the same for all pages
    ExplorerRowMaker maker(question.locations, question.state.folder, question.calendar,
                           request.first != request.last, moves_);
    answer.recorded = addPage(answer.rows, recorded_.output(details_->changes, dataKey_, listed), listed.mode,
                              question.state.page, ChangeSource::measured, maker);
    answer.estimated = addPage(answer.rows, estimated_.output(details_->estimates, dataKey_, listed),
                               listed.mode, question.estimatesPage, ChangeSource::estimated, maker);
    answer.state.page = answer.recorded.page;
    return answer;
}

}  // namespace brindle
