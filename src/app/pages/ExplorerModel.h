#pragma once

#include "app/AppModel.h"
#include "app/LatestAnswer.h"
#include "app/pages/ExplorerCrumbs.h"
#include "app/pages/ExplorerPages.h"
#include "app/pages/ExplorerPlaces.h"
#include "app/pages/ExplorerRows.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <functional>
#include <memory>
#include <optional>

namespace brindle {

/// The explorer of the selected period's changes: one folder's rows, the way to it, and what they are
/// filtered by. What is shown stays until what was asked for is there; only a period that takes long to read
/// leaves the list empty meanwhile.
/// Thread: main.
class ExplorerModel : public QObject {
    Q_OBJECT
    Q_PROPERTY(QAbstractListModel* rows READ rows CONSTANT)
    Q_PROPERTY(QAbstractListModel* crumbs READ crumbs CONSTANT)
    Q_PROPERTY(bool canGoUp READ canGoUp NOTIFY stateChanged)
    Q_PROPERTY(QString search READ search WRITE setSearch NOTIFY stateChanged)
    Q_PROPERTY(int mode READ mode WRITE setMode NOTIFY stateChanged)
    Q_PROPERTY(int direction READ direction WRITE setDirection NOTIFY stateChanged)
    Q_PROPERTY(int sort READ sort WRITE setSort NOTIFY stateChanged)
    Q_PROPERTY(bool isSortable READ isSortable NOTIFY stateChanged)
    Q_PROPERTY(QStringList modes READ modes CONSTANT)
    Q_PROPERTY(QStringList directions READ directions CONSTANT)
    Q_PROPERTY(QStringList sorts READ sorts CONSTANT)
    Q_PROPERTY(bool isFiltered READ isFiltered NOTIFY stateChanged)
    Q_PROPERTY(QString insideText READ insideText NOTIFY answerChanged)
    Q_PROPERTY(QString passingText READ passingText NOTIFY answerChanged)
    Q_PROPERTY(QString rowsText READ rowsText NOTIFY answerChanged)
    Q_PROPERTY(bool hasPages READ hasPages NOTIFY answerChanged)
    Q_PROPERTY(bool hasPreviousPage READ hasPreviousPage NOTIFY answerChanged)
    Q_PROPERTY(bool hasNextPage READ hasNextPage NOTIFY answerChanged)
    Q_PROPERTY(QString estimatesText READ estimatesText NOTIFY answerChanged)
    Q_PROPERTY(QString estimatesRowsText READ estimatesRowsText NOTIFY answerChanged)
    Q_PROPERTY(bool hasEstimatesPages READ hasEstimatesPages NOTIFY answerChanged)
    Q_PROPERTY(bool hasPreviousEstimatesPage READ hasPreviousEstimatesPage NOTIFY answerChanged)
    Q_PROPERTY(bool hasNextEstimatesPage READ hasNextEstimatesPage NOTIFY answerChanged)
    Q_PROPERTY(bool isLoading READ isLoading NOTIFY answerChanged)
    Q_PROPERTY(QString emptySentence READ emptySentence NOTIFY answerChanged)
    Q_PROPERTY(QString emptyActionText READ emptyActionText NOTIFY answerChanged)
    Q_PROPERTY(int currentRow READ currentRow WRITE setCurrentRow NOTIFY currentRowChanged)
    Q_PROPERTY(double scroll READ scroll WRITE setScroll NOTIFY scrollChanged)
    Q_PROPERTY(int firstEstimatedRow READ firstEstimatedRow NOTIFY answerChanged)

public:
    explicit ExplorerModel(AppModel& model, QObject* parent = nullptr);

    /// The recorded rows of the page, then the estimated ones.
    [[nodiscard]] ExplorerList* rows() { return rows_.get(); }
    [[nodiscard]] CrumbList* crumbs() { return crumbs_.get(); }
    [[nodiscard]] bool canGoUp() const { return crumbs_->rows().size() > 1; }

    [[nodiscard]] QString search() const;
    void setSearch(const QString& search);
    /// Places in modes(), directions() and sorts().
    [[nodiscard]] int mode() const { return static_cast<int>(state().mode); }
    [[nodiscard]] int direction() const { return static_cast<int>(state().direction); }
    [[nodiscard]] int sort() const { return static_cast<int>(state().sort); }
    void setMode(int mode);
    void setDirection(int direction);
    void setSort(int sort);
    /// Folders are always listed largest first.
    [[nodiscard]] bool isSortable() const { return state().mode == ExplorerMode::files; }
    [[nodiscard]] QStringList modes() const;
    [[nodiscard]] QStringList directions() const;
    [[nodiscard]] QStringList sorts() const;
    [[nodiscard]] bool isFiltered() const;

    /// What is in the folder and below it: "1,204 files, 1.2 GB added, 300.0 MB freed"; empty when nothing
    /// is.
    [[nodiscard]] QString insideText() const;
    /// What passes the filter in whatever folder; empty without a filter.
    [[nodiscard]] QString passingText() const;
    /// "Rows 201 to 400 of 41,495".
    [[nodiscard]] QString rowsText() const;
    [[nodiscard]] bool hasPages() const { return answer_->recorded.pages > 1; }
    [[nodiscard]] bool hasPreviousPage() const { return answer_->recorded.page > 0; }
    [[nodiscard]] bool hasNextPage() const { return answer_->recorded.page + 1 < answer_->recorded.pages; }
    [[nodiscard]] QString estimatesText() const;
    [[nodiscard]] QString estimatesRowsText() const;
    [[nodiscard]] bool hasEstimatesPages() const { return answer_->estimated.pages > 1; }
    [[nodiscard]] bool hasPreviousEstimatesPage() const { return answer_->estimated.page > 0; }
    [[nodiscard]] bool hasNextEstimatesPage() const {
        return answer_->estimated.page + 1 < answer_->estimated.pages;
    }

    /// What is shown; not null.
    [[nodiscard]] const ExplorerAnswer& answer() const { return *answer_; }
    /// Whether what is shown is of the selected period and scope.
    [[nodiscard]] bool isAnswered() const;
    [[nodiscard]] bool isLoading() const { return isLoading_; }
    /// Why there are no rows; empty while there are.
    [[nodiscard]] QString emptySentence() const;
    /// What would bring rows; empty when nothing would.
    [[nodiscard]] QString emptyActionText() const;

    /// The user's place in the rows, which the view keeps up to date; see placeRestored().
    [[nodiscard]] int currentRow() const { return currentRow_; }
    void setCurrentRow(int row);
    [[nodiscard]] double scroll() const { return scroll_; }
    void setScroll(double scroll);

    /// The number of rows where there is none.
    [[nodiscard]] int firstEstimatedRow() const { return static_cast<int>(answer_->recorded.rowsShown); }

    /// Whether the search field is to take the keyboard; once for each time that the user asks for it.
    Q_INVOKABLE bool takeSearchFocus();

    /// Goes into the row's folder; nothing for a file.
    Q_INVOKABLE void open(int row);
    Q_INVOKABLE void goUp();
    Q_INVOKABLE void openCrumb(int place);
    Q_INVOKABLE void turnPage(int pages);
    Q_INVOKABLE void turnEstimatesPage(int pages);
    Q_INVOKABLE void clearSearch() { setSearch({}); }
    Q_INVOKABLE void followEmptyAction();

Q_SIGNALS:
    void stateChanged();
    void answerChanged();
    void currentRowChanged();
    void scrollChanged();
    /// Another list is shown: the view goes to currentRow() and scroll().
    void placeRestored();
    void searchFocusRequested();

private:
    [[nodiscard]] const ExplorerState& state() const { return model_.selection()->explorer(); }
    void change(const std::function<void(ExplorerState&)>& how);
    void rememberPlace();
    void restorePlace(const std::optional<FolderRef>& from);
    void ask();
    void take(const std::shared_ptr<const ExplorerAnswer>& answer);
    void updateCrumbs();
    void leaveUnknownLocation();
    void awaitPeriod();
    void setFailed();

    AppModel& model_;
    std::unique_ptr<ExplorerList> rows_ = makeExplorerList();
    std::unique_ptr<CrumbList> crumbs_ = makeCrumbList();
    std::shared_ptr<const ExplorerAnswer> answer_ = std::make_shared<const ExplorerAnswer>();
    int estimatesPage_ = 0;
    ExplorerPlaces places_;
    int currentRow_ = 0;
    double scroll_ = 0;
    int searchFocusTaken_ = 0;
    QTimer patience_;
    bool hadHeading_ = false;  // above estimated rows
    bool isLoading_ = false;
    bool hasFailed_ = false;
    std::shared_ptr<ExplorerPages> pages_ = std::make_shared<ExplorerPages>();  // of the answer at work
    LatestAnswer<std::shared_ptr<const ExplorerAnswer>> latest_;                // last, so that it ends first
};

}  // namespace brindle
