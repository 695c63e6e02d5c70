// Writes docs/fault-matrix.md: what each fault of a line does to a reading host, from runs in virtual time.
#include <cstdio>

#include "line/desk.h"

using dravo::Condition;
using dravo::LineEvent;

namespace {

constexpr Us kSecond = 1000000;

struct Fault {
    const char *name;
    std::function<void(WireFaults &)> strike;
    double seconds;         // that it lasts; 0: for one exchange
    bool reopened = false;  // the port, at its end
};

const Fault kFaults[] = {
    {"a request or its reply is lost", [](WireFaults &f) { f.lost = 1; }, 0},
    {"a reply comes after the timeout, within its lifetime", [](WireFaults &f) { f.late = 1; }, 0},
    {"a reply loses its head or tail", [](WireFaults &f) { f.cut = 1; }, 0},
    {"a bit of a reply changes", [](WireFaults &f) { f.altered = 1; }, 0},
    {"stray bytes before or inside a reply", [](WireFaults &f) { f.stray = 1; }, 0},
    {"a frame of another station comes first", [](WireFaults &f) { f.foreign = 1; }, 0},
    {"the controller is busy (exceptions 4, 5, 6)", [](WireFaults &f) { f.exception = 1; }, 0},
    {"an address in a gap is refused from now on", [](WireFaults &f) { f.refusedFrom = 205, f.refusedTo = 209; }, 1e6},
    {"the adapter echoes from now on", [](WireFaults &f) { f.echo = true; }, 1e6},
    {"half of the replies are late, for ten seconds", [](WireFaults &f) { f.late = 0.5; }, 10},
    {"every tenth frame is lost, for ten seconds", [](WireFaults &f) { f.lost = 0.1; }, 10},
    {"the station is switched off for ten seconds", [](WireFaults &f) { f.lost = 1; }, 10},
    {"the device is gone for ten seconds, and opened again", [](WireFaults &f) { f.lost = 1; }, 10, true},
    {"every address is refused for ten seconds", [](WireFaults &f) { f.refusedFrom = 0; }, 10},
};

const Fault kWriteFaults[] = {
    {"none", [](WireFaults &) {}, 0},
    {"half of the replies are late", [](WireFaults &f) { f.late = 0.5; }, 0},
    {"every tenth frame is lost", [](WireFaults &f) { f.lost = 0.1; }, 0},
    {"every tenth reply is cut", [](WireFaults &f) { f.cut = 0.1; }, 0},
    {"the adapter echoes", [](WireFaults &f) { f.echo = true; }, 0},
    {"stray bytes around every reply", [](WireFaults &f) { f.stray = 1; }, 0},
    {"the controller refuses the address", [](WireFaults &f) { f.refusedFrom = 40, f.refusedTo = 41; }, 0},
    {"the controller is often busy (exceptions 4, 5, 6)", [](WireFaults &f) { f.exception = 0.5; }, 0},
    {"the device is opened again every ten seconds", [](WireFaults &) {}, 0, true},
};

/// One run: a healthy line, the fault, and the way back.
class Run {
public:
    explicit Run(const Fault &fault) : fault_(fault), desk_(at9600(), WireFaults(), wireAt9600()) {
        for (const char *address : {"0", "100", "200", "210"}) {
            variables_.append(variable(1, 7, address, 4));
        }
        desk_.line.watch(variables_, 0);
        desk_.run(10 * kSecond);
    }

    void print() {
        WireFaults faults;
        fault_.strike(faults);
        desk_.wire.setFaults(faults);
        const Us struckUs = desk_.now;
        const int sentBefore = desk_.sent;
        if (fault_.seconds > 0) {
            watchUntil(struckUs + Us(std::min(fault_.seconds, 60.0) * 1e6));
        } else {
            desk_.run(desk_.now + 60 * kSecond, [&](const LineEvent &) { return desk_.sent > sentBefore; });
        }
        if (fault_.seconds < 1e6) {
            desk_.wire.setFaults(WireFaults());
        }
        if (fault_.reopened) {
            desk_.line.restart(desk_.now);
        }
        const Us overUs = fault_.seconds < 1e6 ? desk_.now : struckUs;
        watchUntil(desk_.now + 60 * kSecond);
        const bool disturbed = lastBadUs_ > 0;
        std::printf("| %s | %s | %d | %s |\n", fault_.name, words().c_str(),
                    disturbed ? std::max(sentAtLastBad_ - sentBefore, 0) + 1 : 0,
                    disturbed && lastBadUs_ > overUs ? seconds(lastBadUs_ - overUs).c_str() : "0");
    }

private:
    void watchUntil(Us untilUs) {
        while (desk_.now < untilUs) {
            desk_.run(std::min(untilUs, desk_.now + 10000));
            for (const dravo::Variable &one : variables_) {
                const Condition condition = desk_.line.stateOf(one, desk_.now).condition;
                if (condition != Condition::Fresh) {
                    seen_[condition] = true;
                    lastBadUs_ = desk_.now;
                    sentAtLastBad_ = desk_.sent;
                }
            }
        }
    }

    std::string words() const {
        std::string text;
        for (const Condition condition :
             {Condition::Stale, Condition::Failing, Condition::Down, Condition::NotReadable}) {
            if (seen_[condition]) {
                text += (text.empty() ? "" : ", ") + dravo::conditionName(condition).toStdString();
            }
        }
        return text.empty() ? "nothing: values stay fresh" : text;
    }

    static std::string seconds(Us us) {
        char text[32];
        std::snprintf(text, sizeof text, "%.1f s", double(us) / 1e6);
        return text;
    }

    const Fault &fault_;
    Desk desk_;
    QVector<dravo::Variable> variables_;
    bool seen_[6] = {};
    Us lastBadUs_ = 0;
    int sentAtLastBad_ = 0;
};

/// A write a second for a hundred seconds, beside the cyclic reads of another station.
class Writes {
public:
    Writes(const Fault &fault, int station)
        : fault_(fault), station_(station), desk_(at9600(), faults(), wireAt9600()) {}

    void print(const char *name) {
        const QVector<dravo::Variable> others = {variable(2, 7, "0", 4), variable(2, 7, "100", 4)};
        desk_.line.watch(others, 0);
        std::map<int, Us> asked;
        Us longestUs = 0;
        int done = 0;
        std::map<LineEvent::Failure, int> failed;
        const auto look = [&](const LineEvent &event) {
            if (event.kind == LineEvent::Operation) {
                longestUs = std::max(longestUs, desk_.now - asked[event.operation]);
                ++(event.done ? done : failed[event.failure]);
            }
            return false;
        };
        for (int second = 0; second < kWrites; ++second) {
            asked[desk_.line.write(variable(station_, 7, "40"), QByteArray(2, char(second)))] = desk_.now;
            desk_.run((second + 1) * kSecond, look);
            if (fault_.reopened && second % 10 == 9) {
                desk_.line.restart(desk_.now);
            }
        }
        const double reads = double(desk_.line.statistics().forStation(2).counts.answered) / kWrites;
        desk_.run(desk_.now + 100 * kSecond, look);
        std::string outcomes = std::to_string(done) + " done";
        for (const auto &[failure, count] : failed) {
            const char *const names[] = {"", "no answer", "damaged", "refused", "not sure"};
            outcomes += ", " + std::to_string(count) + " failed: " + names[failure];
        }
        std::printf("| %s | %s | %.1f s | %.1f |\n", name, outcomes.c_str(), double(longestUs) / 1e6, reads);
    }

private:
    static constexpr int kWrites = 100;
    WireFaults faults() const {
        WireFaults faults;
        fault_.strike(faults);
        return faults;
    }

    const Fault &fault_;
    const int station_;
    Desk desk_;
};

}  // namespace

int main() {
    std::printf(
        "# What each fault of the line does\n\n"
        "Four variables of four registers of one station, merged into three requests; 9600 baud, timeout 500 ms, two\n"
        "retries, reply lifetime 1.5 s; the controller answers after 5 ms. In no case is a wrong value shown. Written "
        "by\n"
        "`build/native/tests/line-fault-matrix`, and compared with what it writes by `./check`.\n\n"
        "| fault | what the user sees | frames sent until all is fresh again | time, from the end of the fault |\n"
        "|---|---|---|---|\n");
    for (const Fault &fault : kFaults) {
        Run(fault).print();
    }
    std::printf(
        "\nA write of one register a second for a hundred seconds, beside two cyclic reads of station 2; the fault "
        "lasts "
        "all\nthe time. \"Not sure\": the answer looks like an echo, and nobody knows whether the adapter echoes.\n\n"
        "| fault | outcomes | longest wait for one | reads of station 2 a second |\n"
        "|---|---|---|---|\n");
    for (const Fault &fault : kWriteFaults) {
        Writes(fault, 1).print(fault.name);
    }
    Writes(kWriteFaults[0], 9).print("nobody has the station's number");
}
