// Watches variables: passes over them through the driver, shown on the screen or as records. Main thread, which is the
// communication thread as well.
#ifndef DRAVO_HOST_MONITOR_H
#define DRAVO_HOST_MONITOR_H

#include "host/driver_session.h"
#include "host/monitor_model.h"
#include "host/options.h"
#include "host/record_output.h"
#include "host/screen.h"

class Monitor {
public:
    Monitor(const Options &options, const QVector<Variable> &variables, SerialLink &link, Screen *screen)
        : options_(options),
          link_(link),
          screen_(screen),
          output_(options.format),
          session_(options.driver, link),
          requestsPerPass_(session_.readCyclically(variables)),
          model_(variables, requestsPerPass_, link) {}

    /// Until the limit, a signal or the user ends it. @return empty, or what broke it off.
    QString run();
    const MonitorModel &model() const { return model_; }
    bool readerGone() const { return readerGone_; }

private:
    bool goOn();
    bool recordPass();
    void awaitNextPass();
    QString outputLost();
    void writeSelected(const Screen::Wish &wish);
    void reportWrite(const Exchange &exchange);

    const Options &options_;
    SerialLink &link_;
    Screen *screen_;  // null: records
    RecordOutput output_;
    DriverSession session_;
    int requestsPerPass_;
    MonitorModel model_;
    qint64 passStartMs_ = 0;
    int doneInPass_ = 0;
    bool leaving_ = false;
    bool readerGone_ = false;
    int pendingWrite_ = 0;  // 0: none
};

#endif  // DRAVO_HOST_MONITOR_H
