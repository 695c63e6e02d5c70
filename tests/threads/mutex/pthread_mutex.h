// QMutex and QMutexLocker as the library uses them, over the system's mutex: the thread sanitizer does not see the
// locks of QtCore, which is not built with it. First in the include path of the preset threads, and of nothing else.
#ifndef QMUTEX_H  // the guard of Qt's own header, which is not to come too
#define QMUTEX_H

#include <atomic>
#include <mutex>

class QMutex {
public:
    void lock() {
        // Relaxed: the counter must not order what the mutex does not.
        waiting_.fetch_add(1, std::memory_order_relaxed);
        mutex_.lock();
        waiting_.fetch_sub(1, std::memory_order_relaxed);
    }
    bool tryLock() { return mutex_.try_lock(); }
    void unlock() { mutex_.unlock(); }

    /// Threads inside lock().
    int waiting() const { return waiting_.load(std::memory_order_relaxed); }

private:
    std::mutex mutex_;
    std::atomic<int> waiting_{0};
};

class QMutexLocker {
public:
    explicit QMutexLocker(QMutex *mutex) : mutex_(mutex) { mutex_->lock(); }
    ~QMutexLocker() { mutex_->unlock(); }
    QMutexLocker(const QMutexLocker &) = delete;
    QMutexLocker &operator=(const QMutexLocker &) = delete;

private:
    QMutex *const mutex_;
};

#endif  // QMUTEX_H
