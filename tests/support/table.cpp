#include "support/table.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

namespace {

std::vector<std::string> fieldsOf(const std::string &line) {
    std::vector<std::string> fields;
    std::istringstream rest(line + '|');
    for (std::string field; std::getline(rest, field, '|');) {
        field.erase(0, field.find_first_not_of(" \t\r"));
        field.erase(field.find_last_not_of(" \t\r") + 1);
        fields.push_back(field);
    }
    return fields;
}

}  // namespace

TableRow::TableRow(const std::vector<std::string> &titles, const std::string &line) : line_(line) {
    const std::vector<std::string> fields = fieldsOf(line);
    for (size_t i = 0; i < titles.size() && i < fields.size(); ++i) {
        fields_[titles[i]] = fields[i];
    }
    if (fields.size() != titles.size() || fields.size() != fields_.size()) {
        throw std::logic_error("another width than the titles have, or a title stands twice: " + line);
    }
}

const std::string &TableRow::text(const char *title) const {
    const auto found = fields_.find(title);
    if (found == fields_.end()) {
        throw std::logic_error(std::string("no column '") + title + "' for: " + line_);
    }
    return found->second;
}

int TableRow::number(const char *title) const {
    std::istringstream field(text(title));
    int value = 0;
    if (!(field >> value) || !field.eof()) {
        throw std::logic_error("'" + field.str() + "' is no number, column '" + title + "': " + line_);
    }
    return value;
}

std::vector<TableRow> table(const std::string &text) {
    std::vector<TableRow> cases;
    std::vector<std::string> titles;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        const bool blank = line.find_first_not_of(" \t\r") == std::string::npos;
        if (titles.empty() && !blank) {
            titles = fieldsOf(line);
        } else if (!blank) {
            cases.emplace_back(titles, line);
        }
    }
    return cases;
}

std::string cases(const char *file, const char *section) {
    std::ostringstream all;
    all << "\n" << std::ifstream(std::string(DRAVO_TEST_FOLDER "/") + file + ".cases").rdbuf();
    const std::string text = all.str(), title = std::string("\n[") + section + "]\n";
    const size_t found = text.find(title);
    if (found == std::string::npos) {
        throw std::logic_error(std::string(file) + ".cases has no table [" + section + "]");
    }
    const size_t first = found + title.size();
    return text.substr(first, text.find("\n[", first) - first);
}
