#include "host/commands/list_options.h"

#include <algorithm>

namespace {

/// Adds what one item of the list stands for to items. @return its faults.
using TakeItem = std::function<QStringList(const QString &item, std::vector<int> *items)>;

QStringList addOnce(int value, const QString &name, std::vector<int> *items) {
    if (std::find(items->begin(), items->end(), value) != items->end()) {
        return {QStringLiteral("names %1 twice").arg(name)};
    }
    items->push_back(value);
    return {};
}

TakeItem oneNumber(Bounds bounds) {
    return [bounds](const QString &item, std::vector<int> *items) {
        QStringList twice;
        const auto put = [&](int number) { twice = addOnce(number, QString::number(number), items); };
        return takeNumber(bounds, put)(item) + twice;
    };
}

TakeItem range(Bounds bounds) {
    return [bounds](const QString &item, std::vector<int> *items) {
        const int dash = item.indexOf(QLatin1Char('-'), 1);
        if (dash < 0) {
            return oneNumber(bounds)(item, items);
        }
        std::vector<int> ends;
        const auto put = [&ends](int number) { ends.push_back(number); };
        QStringList faults = takeNumber(bounds, put)(item.left(dash));
        faults += takeNumber(bounds, put)(item.mid(dash + 1));
        if (faults.isEmpty() && ends[0] > ends[1]) {
            faults.append(QStringLiteral("'%1' ends before it begins").arg(item));
        }
        for (int number = faults.isEmpty() ? ends[0] : 1; faults.isEmpty() && number <= ends[1]; ++number) {
            faults = addOnce(number, QString::number(number), items);  // of many the first is enough
        }
        return faults;
    };
}

OptionSet::Take takeList(int most, const TakeItem &takeItem, const std::function<void(const std::vector<int> &)> &put) {
    return [=](const QString &list) -> QStringList {
        if (list.count(QLatin1Char(',')) >= most) {
            return {QStringLiteral("names more than %1").arg(most)};
        }
        std::vector<int> items;
        QStringList faults;
        for (const QString &item : list.split(QLatin1Char(','))) {
            faults += takeItem(item.trimmed(), &items);
        }
        if (faults.isEmpty()) {
            put(items);
        }
        return faults;
    };
}

}  // namespace

OptionSet::Take takeNumbers(Bounds bounds, int most, std::vector<int> *target) {
    return takeList(most, oneNumber(bounds), [target](const std::vector<int> &items) { *target = items; });
}

OptionSet::Take takeRanges(Bounds bounds, std::vector<int> *target) {
    return takeList(bounds.highest - bounds.lowest + 1, range(bounds),
                    [target](const std::vector<int> &items) { *target = items; });
}

OptionSet::Take takeNames(const QStringList &names, const std::function<void(const std::vector<int> &)> &put) {
    const TakeItem one = [names](const QString &item, std::vector<int> *items) -> QStringList {
        const int place = names.indexOf(item);
        return place < 0 ? QStringList{QStringLiteral("'%1': give %2").arg(item, names.join(QStringLiteral(", ")))}
                         : addOnce(place, item, items);
    };
    return takeList(names.size(), one, put);
}
