// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/demo/Demo.h"

#include "simulator/demo/ScreenUser.h"
#include "simulator/demo/StatusText.h"
#include "simulator/demo/WindowLook.h"
#include "simulator/dfu/Checksum.h"

#include <QFile>
#include <QFileInfo>
#include <QTextStream>

#include <cstdio>
#include <functional>
#include <utility>

namespace {

constexpr QPoint kAside(520, 280);
constexpr int kPatience = 30000;
constexpr int kTimeOut = 90000; // longer than the program's own

DeviceDescription with(const QString &fault, DeviceDescription device)
{
    device.behaviour.addFault(fault);
    return device;
}

/// The simulated user.
class Watcher
{
public:
    Watcher(const InsideProgram &program, QString pictures)
        : m_program(program)
        , m_pictures(std::move(pictures))
        , m_user("FW Update")
    { }

    QString status() { return WindowLook::statusText(m_user.look()); }
    bool isEnabled() { return WindowLook::isUpgradeEnabled(m_user.look()); }

    bool waitUntilEnabled(int milliseconds)
    {
        return waitUntil([this] { return isEnabled(); }, milliseconds);
    }

    /// Waits for the status text after a click, or for an unknown one, which is the tool's.
    void waitForNews()
    {
        const auto isNews = [this] {
            const QString text = status();
            return !text.isEmpty() || (text.isNull() && isEnabled());
        };
        waitUntil(isNews, kPatience);
    }

    void waitForSomeProgress()
    {
        constexpr int kSome = 600;
        const auto isUnderWay = [this] {
            return WindowLook::progress(m_user.look()) >= kSome || isEnabled();
        };
        waitUntil(isUnderWay, kPatience);
    }

    /// Waits for the last text, since the button is painted before it.
    void waitForLastText()
    {
        constexpr int kShortly = 1000;
        waitUntil([this] { return status() != StatusText::kUpgrading; }, kShortly);
    }

    void click(const QPoint &position)
    {
        m_user.click(position);
        m_user.movePointer(kAside);
    }

    void save(const QString &name) { m_user.look().save(m_pictures + '/' + name); }

private:
    /// Stops waiting if the program exits.
    bool waitUntil(const std::function<bool()> &condition, int milliseconds)
    {
        ScreenUser::waitUntil([&] { return condition() || !m_program.isRunning(); }, milliseconds);
        return condition();
    }

    const InsideProgram &m_program;
    const QString m_pictures;
    ScreenUser m_user;
};

} // namespace

Demo::Demo(const QString &folder, const QString &fault, const DeviceDescription &device)
    : m_folder(folder)
    , m_fault(fault)
    , m_description(with(fault, device))
    , m_device(m_testbed, m_description)
    , m_program(m_testbed)
{
    m_isValid = fault.isEmpty() || fault == "no-device" || fault == "no-package"
        || DeviceBehaviour().addFault(fault);
    m_program.setLog(folder + "/log");
    QObject::connect(&m_device, &SimulatedDevice::happened,
                     [](const DeviceEvent &event) { say(event.text); });
}

QString Demo::help()
{
    return "  no-device            no device is connected\n"
           "  no-package           the firmware package is missing\n"
        + DeviceBehaviour::help();
}

bool Demo::prepare()
{
    constexpr int kImageSize = 200000;
    const QFileInfo tool(file("nrfutil-mac"));
    if (!tool.isFile() || !tool.isExecutable()) {
        say("demo: " + tool.absoluteFilePath() + " is not an executable file");
        return false;
    }
    const QFileInfo package(file("dfu.zip"));
    DfuPackage contents;
    if (!package.exists()) {
        contents = DfuPackage::generate(kImageSize, 1, m_description.bootloader);
        say("demo: created dfu.zip, image SHA-256 " + Checksum::sha256(contents.firmware));
        return contents.write(package.filePath()) == DfuPackage::Error::None;
    }
    const auto error = contents.read(package.filePath());
    if (error != DfuPackage::Error::None) {
        say("demo: " + package.canonicalFilePath() + ": " + DfuPackage::errorText(error));
    }
    return error == DfuPackage::Error::None;
}

int Demo::playForPerson()
{
    if (!openProgram()) {
        return 1;
    }
    say("click \"Start Upgrade\", and close the window when you are done");
    awaitEnd();
    if (!m_fault.isEmpty()) {
        say("demo: closed");
        return m_program.exitCode();
    }
    if (!isImageRight()) {
        say(m_device.refusal().isEmpty() ? "demo: closed before the device was upgraded"
                                         : disappointment(Outcome::ToolFailed));
        return 1;
    }
    say("demo: upgraded, image verified");
    return 0;
}

int Demo::playWithUser(const QString &pictures)
{
    Watcher watcher(m_program, pictures);
    if (!openProgram() || !watcher.waitUntilEnabled(kPatience)) {
        say("demo: the program's window did not appear");
        return 1;
    }
    watcher.save("idle.png");
    watcher.click(WindowLook::kUpgradeButton);
    say("clicked \"Start Upgrade\"");
    watcher.waitForNews();
    if (watcher.status() == StatusText::kUpgrading) {
        say(QString("the window shows: ") + StatusText::kUpgrading);
        watcher.waitForSomeProgress();
    }
    watcher.save("running.png");
    if (!watcher.waitUntilEnabled(kTimeOut)) {
        say("demo: the upgrade did not finish");
        return 1;
    }
    watcher.waitForLastText();
    watcher.save("finished.png");
    const QString status = watcher.status();
    say("the window shows: " + (status.isNull() ? "the tool's error text" : status));

    watcher.click(WindowLook::kCloseButton);
    say("clicked the close button");
    awaitEnd();
    return verdict(status == StatusText::kSuccess        ? Outcome::Success
                       : status == StatusText::kNotFound ? Outcome::NoDevice
                                                         : Outcome::ToolFailed);
}

void Demo::stop()
{
    m_program.terminate();
}

bool Demo::isExpected(Outcome outcome) const
{
    constexpr int kProgramWaits = 2000; // for the bootloader
    const DeviceBehaviour &behaviour = m_description.behaviour;
    if (m_fault == "no-device" || behaviour.openFails || behaviour.writeFails || !behaviour.returns
        || behaviour.returnAfter >= kProgramWaits) {
        return outcome == Outcome::NoDevice;
    }
    const qint64 dropOut = behaviour.dropOutAfter;
    if (m_fault == "no-package" || behaviour.wrongCrc || behaviour.silent || behaviour.hashFails
        || (dropOut >= 0 && dropOut <= readPackage().firmware.size())) {
        return outcome == Outcome::ToolFailed;
    }
    // If the bootloader is slower than by default, the program may time out.
    const bool mayTimeOut = m_fault.startsWith("slow=");
    return outcome == Outcome::Success || (mayTimeOut && outcome == Outcome::ToolFailed);
}

bool Demo::openProgram()
{
    if (m_fault == "no-package") {
        QFile::remove(file("dfu.zip"));
    }
    if (m_fault != "no-device") {
        m_device.startInApplication();
    }
    if (!m_program.start(file("fw-update"), {}, m_folder)) {
        say("demo: cannot start " + file("fw-update"));
        return false;
    }
    return true;
}

void Demo::awaitEnd()
{
    const auto isOver = [this] {
        return m_program.isAllFinished() && (!m_device.isRestarting() || !isImageRight());
    };
    while (!ScreenUser::waitUntil(isOver, kPatience)) { }
}

int Demo::verdict(Outcome outcome) const
{
    if (!m_device.image().isEmpty()) {
        say("SHA-256 of the package's image: " + Checksum::sha256(readPackage().firmware));
        say("SHA-256 of the device's image:  " + Checksum::sha256(m_device.image()));
    }
    if (outcome == Outcome::Success && !isImageRight()) {
        say("demo: the program reported success, but the device has a different image");
        return 1;
    }
    if (!isExpected(outcome)) {
        say(disappointment(outcome));
        return 1;
    }
    if (outcome == Outcome::Success) {
        say("demo: upgraded, image verified");
    } else {
        say("demo: failed as expected with fault \"" + m_fault + '"');
    }
    return 0;
}

QString Demo::disappointment(Outcome outcome) const
{
    if (outcome == Outcome::Success) {
        return "demo: the upgrade succeeded in spite of the fault";
    }
    if (outcome == Outcome::NoDevice) {
        return "demo: the program did not find the device";
    }
    return m_device.refusal().isEmpty()
        ? "demo: the tool did not report success, see " + file("log")
        : "demo: the device refused the package: " + m_device.refusal();
}

DfuPackage Demo::readPackage() const
{
    DfuPackage package;
    package.read(file("dfu.zip"));
    return package;
}

bool Demo::isImageRight() const
{
    const QByteArray firmware = readPackage().firmware;
    return !firmware.isEmpty() && m_device.image() == firmware;
}

void Demo::say(const QString &line)
{
    QTextStream(stdout) << line << '\n';
}
