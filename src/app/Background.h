#pragma once

#include <QFuture>
#include <QPromise>
#include <QThreadPool>
#include <exception>
#include <memory>
#include <type_traits>
#include <utility>

namespace brindle {

/// Threads that wait for the history and the disk in the place of the main thread, which never does.
///
/// What is to be done with a result is said with QFuture::then(), with the object whose thread it is for as
/// its context: `background.run(read).then(this, publish).onFailed(this, tell)`. A result that is there
/// already is published before then() returns.
class Background {
public:
    Background() { pool_.setMaxThreadCount(mostThreads); }

    /// Waits for all that runs.
    ~Background() { pool_.waitForDone(); }
    Background(const Background&) = delete;
    Background& operator=(const Background&) = delete;

    /// Thread: any. What `work` throws is the future's failure.
    template <class Work>
    [[nodiscard]] auto run(Work work) -> QFuture<std::invoke_result_t<Work&>> {
        using Result = std::invoke_result_t<Work&>;
        auto promise = std::make_shared<QPromise<Result>>();
        promise->start();
        auto future = promise->future();
        // QRunnable wants what can be copied: hence the shared pointers.
        pool_.start([promise, work = std::make_shared<Work>(std::move(work))] {
            try {
                if constexpr (std::is_void_v<Result>)
                    (*work)();
                else
                    promise->addResult((*work)());
            } catch (...) {
                promise->setException(std::current_exception());
            }
            promise->finish();
        });
        return future;
    }

private:
    // They wait most of the time: for a check that ends, for the reader, for the disk.
    static constexpr int mostThreads = 8;

    QThreadPool pool_;
};

}  // namespace brindle
