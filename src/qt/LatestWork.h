#pragma once

#include <QObject>
#include <QThreadPool>

#include <atomic>
#include <exception>
#include <memory>
#include <utility>

namespace zem {

/// Whether a piece of work is no longer wanted, for work that can stop early.
using IsOutdated = std::atomic<bool>;

/// Work on another thread of which only the last result counts: a panel asks for it anew whenever the game
/// changes. The work gets a copy of what it needs; its result comes through the event loop.
class LatestWork {
public:
    LatestWork() { pool_.setMaxThreadCount(1); }
    ~LatestWork() {
        Cancel();
        pool_.waitForDone();
    }
    LatestWork(const LatestWork&) = delete;
    LatestWork& operator=(const LatestWork&) = delete;

    /// Nothing that was asked for arrives any more.
    void Cancel() {
        if (isOutdated_)
            *isOutdated_ = true;
        isOutdated_ = nullptr;
        pool_.clear();
    }

    /// Whether a result is still to come.
    bool IsRunning() const { return isOutdated_ != nullptr; }

    /// Runs work(isOutdated) on another thread and calls done(result) on that of the receiver, unless other
    /// work was asked for in the meantime. Work that throws ends without a result.
    /// @param receiver  owns this object
    template <class Work, class Done>
    void Run(QObject& receiver, Work work, Done done) {
        Cancel();
        isOutdated_ = std::make_shared<IsOutdated>(false);
        pool_.start(
            [this, &receiver, work = std::move(work), done = std::move(done), mine = isOutdated_]() mutable {
                using Result = decltype(work(*mine));
                std::shared_ptr<Result> result;
                try {
                    if (!*mine)
                        result = std::make_shared<Result>(work(*mine));
                } catch (const std::exception&) {
                    result = nullptr; // most likely out of memory; what was shown before stays
                }
                const auto deliver = [this, result, mine, done = std::move(done)]() mutable {
                    if (*mine)
                        return;
                    isOutdated_ = nullptr;
                    if (result)
                        done(std::move(*result));
                };
                QMetaObject::invokeMethod(&receiver, deliver, Qt::QueuedConnection);
            });
    }

private:
    QThreadPool pool_;
    std::shared_ptr<IsOutdated> isOutdated_; // of the work that runs; null when none does
};

} // namespace zem
