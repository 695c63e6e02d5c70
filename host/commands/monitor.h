// Watches variables: passes over them, shown on the screen or as records. Main thread, which is the communication
// thread as well.
#ifndef DRAVO_HOST_COMMANDS_MONITOR_H
#define DRAVO_HOST_COMMANDS_MONITOR_H

#include "host/commands/monitor_streams.h"
#include "host/commands/open_line.h"
#include "host/gateway/gateway.h"
#include "host/screen/monitor_model.h"
#include "host/screen/output.h"
#include "host/screen/screen.h"
#include "host/screen/terminal.h"
#include "host/statistics/run_statistics.h"

class Monitor {
public:
    /// line: open. terminal: null for records. All but the variables outlive the monitor.
    Monitor(const Options &settings, const QVector<Tag> &variables, OpenLine *line, Terminal *terminal,
            MonitorStreams *streams);

    /// Until the limit, a signal or the user ends it.
    Failure run();
    /// After run(): what is still to be written to the streams, whatever ended it.
    void end();
    bool anyFailed() const { return model_.anyFailed() || streams_->statisticsFailed; }
    QStringList statisticsLines();
    /// Whether it ended since nobody reads the records any more.
    bool readerGone() const { return output_.readerGone(); }

private:
    void serve();
    void serveScreen();
    void serveStreams();
    void recordStatistics();
    void tellUser(const QString &text, Tone tone);
    bool take(const dravo::LineEvent &event);
    void passDone(qint64 us);
    void reopen();
    void writeSelected(const Screen::Wish &wish);
    void reportWrite(const dravo::LineEvent &end);

    const Options &settings_;
    OpenLine *line_;
    Terminal *terminal_;
    Output output_;
    qint64 startUs_;
    dravo::Line engine_;
    MonitorModel model_;
    Screen screen_;  // where there is a terminal
    MonitorStreams *streams_;
    RunStatistics statistics_;
    qint64 nextRecordUs_;
    std::optional<Gateway> gateway_;
    bool toldInputEnded_ = false;
    qint64 drawnUs_ = 0;        // the screen, last
    QMap<int, QString> asked_;  // the labels of writes that are not over, by operation
    Failure unwritten_;         // of the output
    bool leaving_ = false;
};

#endif  // DRAVO_HOST_COMMANDS_MONITOR_H
