// Why a port does not open: what the user is told for each reason that the system has.
#include "host/pump/port_fault.h"

#include <fcntl.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QtCore/QProcess>

#include "host/pump/port_holders.h"
#include "host/simulation/simulated_line.h"

namespace {

TEST(PortFault, SaysWhoHasThePortAndWhatToDo) {
    SimulatedLineOptions options;
    options.stations = {1};
    std::unique_ptr<SimulatedLine> line;
    ASSERT_FALSE(SimulatedLine::start(options, &line));
    const char *device = line->device().c_str();
    QProcess other;
    other.setStandardInputFile(device);
    other.start("sleep", {"60"});
    ASSERT_TRUE(other.waitForStarted());
    EXPECT_EQ(portHolders(device), QStringList{QString("sleep (process %1)").arg(other.processId())});
    other.kill();
    other.waitForFinished();

    const int held = open(device, O_RDWR | O_NOCTTY);
    const uid_t user = geteuid();
    EXPECT_TRUE(user != 0 || fchown(held, user, getgrnam("dialout")->gr_gid) == 0);
    struct stat file {};
    ASSERT_TRUE(fstat(held, &file) == 0 && ioctl(held, TIOCEXCL) == 0);
    const QString group = getgrgid(file.st_gid)->gr_name;
    EXPECT_TRUE(user != 0 || seteuid(65534) == 0) << "root may open everything";
    const auto fault = [device, user](mode_t mode) {
        const uid_t self = geteuid();
        EXPECT_TRUE(seteuid(user) == 0 && chmod(device, mode) == 0 && seteuid(self) == 0);
        return portFault(device, "?");
    };
    EXPECT_EQ(fault(0666), "another program has it open");
    EXPECT_EQ(fault(0060),
              QString("no permission: it is for group '%1': sudo usermod -aG %1 $USER, then log in again").arg(group));
    EXPECT_TRUE(fault(0040).startsWith("no permission: only user '"));
    EXPECT_EQ(seteuid(user), 0);
    close(held);
    EXPECT_EQ(fault(0600), "?") << "it opens: the caller knows more";
    EXPECT_EQ(portFault("/dev/null", "?"), "it is no serial port");
    EXPECT_TRUE(portFault("/dev/null/x", "?").startsWith("there is no such device"));
}

}  // namespace
