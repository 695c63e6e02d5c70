#include "support/table.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>

namespace {

std::string trimmed(const std::string &text) {
    const size_t first = text.find_first_not_of(" \t\r");
    return first == std::string::npos ? std::string() : text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

std::vector<std::string> fieldsOf(const std::string &line) {
    std::vector<std::string> fields;
    std::istringstream rest(line + '|');
    for (std::string field; std::getline(rest, field, '|');) {
        fields.push_back(trimmed(field));
    }
    return fields;
}

}  // namespace

TableRow::TableRow(const std::vector<std::string> &titles, const std::vector<std::string> &fields,
                   const std::string &text)
    : titles_(titles), fields_(fields), line_(text) {
    if (fields.size() != titles.size()) {
        throw std::logic_error(std::to_string(fields.size()) + " fields under " + std::to_string(titles.size()) +
                               " titles: " + text);
    }
}

const std::string &TableRow::text(const char *title) const {
    const auto found = std::find(titles_.begin(), titles_.end(), title);
    if (found == titles_.end()) {
        throw std::logic_error(std::string("no column '") + title + "' for: " + line_);
    }
    return fields_[size_t(found - titles_.begin())];
}

int TableRow::number(const char *title) const {
    const std::string &field = text(title);
    size_t read = 0;
    const int value = field.empty() ? 0 : std::stoi(field, &read);
    if (field.empty() || read != field.size()) {
        throw std::logic_error(std::string("'") + field + "' is no number, column '" + title + "': " + line_);
    }
    return value;
}

std::vector<TableRow> table(const char *text) {
    std::vector<TableRow> cases;
    std::vector<std::string> titles;
    std::istringstream lines(text);
    for (std::string line; std::getline(lines, line);) {
        if (trimmed(line).empty()) {
            continue;
        }
        if (titles.empty()) {
            titles = fieldsOf(line);
            if (std::set<std::string>(titles.begin(), titles.end()).size() != titles.size()) {
                throw std::logic_error("a title stands twice: " + line);
            }
        } else {
            cases.emplace_back(titles, fieldsOf(line), trimmed(line));
        }
    }
    return cases;
}

const char *cases(const char *file, const char *section) {
    static std::map<std::string, std::string> tables;  // by file and section; stays where it is
    const std::string path = std::string(DRAVO_TEST_FOLDER "/") + file + ".cases";
    std::string &text = tables[path + section];
    if (text.empty()) {
        std::ifstream lines(path);
        bool inside = false;
        for (std::string line; std::getline(lines, line);) {
            const bool title = line.size() > 1 && line.front() == '[' && line.back() == ']';
            inside = title ? line == std::string("[") + section + "]" : inside;
            text += inside && !title ? line + "\n" : "";
        }
    }
    if (text.empty()) {
        throw std::logic_error(path + " has no table [" + section + "]");
    }
    return text.c_str();
}
