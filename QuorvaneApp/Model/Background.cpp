#include "QuorvaneApp/Model/Background.h"

#include <utility>

Background::Background(QObject* parent) : QObject(parent) {
    connect(this, &Background::posted, this, &Background::collect, Qt::QueuedConnection);
}

Background::~Background() {
    // All are told before the first is waited for.
    for (Job& job : jobs_) {
        job.thread.request_stop();
    }
    jobs_.clear();
}

std::stop_source Background::start(Work work) {
    // A list never moves its jobs, so a thread may keep the address of its own.
    Job& job = jobs_.emplace_back();
    job.thread = std::jthread([this, &job, work = std::move(work)](const std::stop_token& stop) {
        Completion completion = work(stop);
        {
            const std::lock_guard guard(lock_);
            mailbox_.push_back(std::move(completion));
            job.isDone = true;
        }
        Q_EMIT posted();
    });
    return job.thread.get_stop_source();
}

void Background::post(Completion completion) {
    {
        const std::lock_guard guard(lock_);
        mailbox_.push_back(std::move(completion));
    }
    Q_EMIT posted();
}

void Background::collect() {
    std::vector<Completion> arrived;
    std::list<Job> done;
    {
        const std::lock_guard guard(lock_);
        arrived.swap(mailbox_);
        for (auto job = jobs_.begin(); job != jobs_.end();) {
            const auto next = std::next(job);
            if (job->isDone) {
                done.splice(done.end(), jobs_, job);
            }
            job = next;
        }
    }
    // Without the lock: a completion may start further work. The threads in `done` are joined at the end.
    for (const Completion& completion : arrived) {
        if (completion) {
            completion();
        }
    }
}
