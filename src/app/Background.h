#pragma once

#include <QObject>
#include <QThreadPool>
#include <exception>
#include <functional>
#include <memory>
#include <mutex>
#include <type_traits>
#include <utility>
#include <vector>

namespace brindle {

/// Threads that wait for the history and the disk in the place of the main thread, which never does. What
/// they bring is taken on the thread that made this, from its event loop.
///
/// A member of the object that it works for, declared behind whatever the results are taken into: its
/// destructor waits for all that runs, and what has not been taken by then is dropped.
class Background : public QObject {
    Q_OBJECT

public:
    /// They wait most of the time: for a check that ends, for the reader, for the disk.
    static constexpr int mostThreads = 8;

    /// With one thread, what is asked for is done in that order.
    explicit Background(int threads = mostThreads);
    ~Background() override;

    /// `work` on some thread; then `done` with its result, or `failed` with the std::exception that it threw.
    template <class Work, class Done, class Failed>
    void run(Work work, Done done, Failed failed) {
        // Tasks want what can be copied: hence the shared pointers.
        auto task = std::make_shared<Work>(std::move(work));
        auto take = std::make_shared<Done>(std::move(done));
        auto tell = std::make_shared<Failed>(std::move(failed));
        pool_.start([this, task, take, tell] {
            try {
                if constexpr (std::is_void_v<std::invoke_result_t<Work&>>) {
                    (*task)();
                    post([take] { (*take)(); });
                } else {
                    auto result = std::make_shared<std::invoke_result_t<Work&>>((*task)());
                    post([take, result] { (*take)(std::move(*result)); });
                }
            } catch (const std::exception&) {
                post([tell, error = std::current_exception()] {
                    try {
                        std::rethrow_exception(error);
                    } catch (const std::exception& thrown) {
                        (*tell)(thrown);
                    }
                });
            }
        });
    }

    /// Has something done on the thread that made this, in the order of the calls. Any thread may call.
    void post(std::function<void()> task);

Q_SIGNALS:
    void posted();

private:
    void takePosted();

    std::mutex mutex_;
    std::vector<std::function<void()>> posted_;
    QThreadPool pool_;
};

/// A value that is freed in the background, whoever lets go of it last: a long list takes longer than the
/// main thread has time for.
template <class Value>
[[nodiscard]] std::shared_ptr<const Value> freedInBackground(Value value) {
    return std::shared_ptr<const Value>(new Value(std::move(value)), [](const Value* freed) {
        QThreadPool::globalInstance()->start([freed] { delete freed; });
    });
}

}  // namespace brindle
