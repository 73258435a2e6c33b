#pragma once

#include "ScanKit/Support/Parallel.h"

#include <functional>
#include <list>
#include <mutex>
#include <stop_token>
#include <thread>
#include <vector>

#include <QObject>

/// Runs work on threads of its own and hands what comes of it back to the thread that this object lives in.
/// Its end tells all work to stop and waits for it; nothing is handed back afterwards. (Standard threads and
/// one locked mailbox, since the thread sanitizer cannot see into Qt's own hand-over.)
class Background : public QObject {
    Q_OBJECT

public:
    /// Runs on this object's thread.
    using Completion = std::function<void()>;
    /// Runs on a thread of its own, and returns what to do with its outcome.
    using Work = std::function<Completion(const ScanKit::StopToken&)>;

    explicit Background(QObject* parent = nullptr);
    ~Background() override;

    /// Begins at once. The stop source tells the work that nobody waits for it any more.
    std::stop_source start(Work work);
    /// Hands something over before the work is done. May be called from any thread.
    void post(Completion completion);

Q_SIGNALS:
    void posted();

private:
    struct Job {
        std::jthread thread;
        bool isDone = false;  ///< guarded by the mailbox's lock
    };
    void collect();

    std::mutex lock_;
    std::vector<Completion> mailbox_;
    std::list<Job> jobs_;
};
