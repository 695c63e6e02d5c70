// Tables of cases as tests write them, a few lines in the test, longer ones in files beside it: fields between "|", one
// case a line, its name first. The first line titles the columns, and columns are read by title. A line of another
// width, a title that stands twice or that the table does not have, and a field that is no number end the test.
#ifndef DRAVO_TESTS_TABLE_H
#define DRAVO_TESTS_TABLE_H

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <vector>

class TableRow {
public:
    TableRow(const std::vector<std::string> &titles, const std::string &line);

    /// The field of a column as it stands; blanks around it are dropped.
    const std::string &text(const char *title) const;
    const char *operator[](const char *title) const { return text(title).c_str(); }
    int number(const char *title) const;
    bool empty(const char *title) const { return text(title).empty(); }

    /// The case as it is written, for SCOPED_TRACE.
    const std::string &line() const { return line_; }

private:
    std::map<std::string, std::string> fields_;  // by title
    std::string line_;
};

/// The cases of a table.
std::vector<TableRow> table(const std::string &text);

/// A table out of a file beside the test: cases("vars/request_queue", "writes") stands under [writes] in
/// tests/vars/request_queue.cases. A file or a section that is not there ends the test.
std::string cases(const char *file, const char *section);

/// Expects in the column of each case the text that outcome makes of the case.
template <typename Outcome>
void expectColumn(const std::string &cases, const char *title, Outcome outcome) {
    for (const TableRow &row : table(cases)) {
        EXPECT_EQ(outcome(row), row.text(title)) << row.line();
    }
}

#endif  // DRAVO_TESTS_TABLE_H
