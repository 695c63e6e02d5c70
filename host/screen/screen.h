// The live screen of the monitor: what keys do, and what stands on it. Keys, sizes and times come in, lines come out;
// it knows no terminal. Main thread.
#ifndef DRAVO_HOST_SCREEN_SCREEN_H
#define DRAVO_HOST_SCREEN_SCREEN_H

#include <optional>

#include "host/screen/monitor_model.h"
#include "host/screen/notice.h"
#include "host/screen/row_layout.h"
#include "host/screen/selection.h"
#include "host/screen/text_page.h"
#include "host/screen/write_prompt.h"

class Screen {
public:
    /// lineName: port and settings. The model outlives the screen.
    Screen(const MonitorModel &model, const QString &lineName);

    /// A page of text behind a key.
    struct Page {
        char key;
        QString name;  // for the list of keys: "statistics"
        std::function<QStringList(const Tag &selected, int width, qint64 nowUs)> lines;
    };
    void addPage(const Page &page) { pages_.append(page); }

    struct Wish {
        enum class Kind { None, Leave, Write } kind = Kind::None;
        int variable = 0;   // Write: its place in the model
        QByteArray values;  // Write: of all of it
    };
    Wish press(const Key &key, qint64 nowUs);
    /// Tells the user what has happened; it fades.
    void say(const QString &text, Tone tone, qint64 nowUs) { notice_ = Notice(text, tone, nowUs); }

    ScreenLines lines(const ScreenSize &size, qint64 nowUs);

private:
    Wish pressInList(const Key &key, qint64 nowUs);
    Wish pressInPrompt(const Key &key, qint64 nowUs);
    void pressInSearch(const Key &key, qint64 nowUs);
    void find(int step, qint64 nowUs);
    void open(const Page &page);
    void openDetail();
    void openKeys();
    const Tag &selectedTag() const { return model_.variables().at(selection_.row()); }
    ShownVariable selected(qint64 nowUs) const { return model_.shown(selectedTag(), nowUs); }

    ScreenLines listLines(const ScreenSize &size, qint64 nowUs);
    ScreenLines areaLines(int rows, int width, qint64 nowUs) const;
    QString keyWords() const;

    const MonitorModel &model_;
    QString lineName_;
    RowLayout layout_;
    Selection selection_;
    QVector<Page> pages_;
    // What has the keys: the first of these that is there, else the list.
    std::optional<TextPage> page_;
    std::optional<WritePrompt> prompt_;
    std::optional<TypedLine> search_;
    QString sought_;
    Notice notice_;
};

#endif  // DRAVO_HOST_SCREEN_SCREEN_H
