// Watches variables: passes over them through the driver, shown on the screen or as records. Main thread, which is the
// communication thread as well.
#ifndef DRAVO_HOST_COMMANDS_MONITOR_H
#define DRAVO_HOST_COMMANDS_MONITOR_H

#include <QtCore/QElapsedTimer>

#include "host/commands/options.h"
#include "host/screen/monitor_model.h"
#include "host/screen/output.h"
#include "host/screen/screen.h"

class Monitor {
public:
    /// screen: null for records. settings, link and screen outlive the monitor.
    Monitor(const Options &settings, const QVector<Variable> &variables, SerialLink *link, Screen *screen)
        : settings_(settings),
          link_(link),
          screen_(screen),
          session_(settings.driver, *link),
          requestsPerPass_(session_.readCyclically(variables)),
          model_(variables, requestsPerPass_) {
        clock_.start();
    }

    /// Until the limit, a signal or the user ends it.
    Failure run();
    const MonitorModel &model() const { return model_; }
    /// Whether it ended since nobody reads the records any more.
    bool readerGone() const { return output_.readerGone(); }

private:
    void serve();
    bool leaving() const { return leaving_; }
    void judge(const Exchange &exchange);
    Failure recordPass();
    void awaitNextPass();
    void writeSelected(const Screen::Wish &wish);
    void reportWrite(const Exchange &exchange);

    const Options &settings_;
    SerialLink *link_;
    Screen *screen_;
    Output output_;
    DriverSession session_;
    int requestsPerPass_;
    MonitorModel model_;
    QElapsedTimer clock_;
    qint64 passStartMs_ = 0;
    int doneInPass_ = 0;
    bool leaving_ = false;
    int pendingWrite_ = 0;  // 0: none
};

#endif  // DRAVO_HOST_COMMANDS_MONITOR_H
