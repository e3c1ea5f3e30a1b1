// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/Demo.h"

#include "simulator/DfuPackage.h"
#include "simulator/ScreenUser.h"
#include "simulator/WindowLook.h"

#include <QFile>
#include <QTextStream>

#include <cstdio>
#include <functional>
#include <utility>

namespace {

constexpr QPoint kAside(520, 280);
constexpr int kPatience = 30000;
constexpr int kTimeOut = 90000; // the program's own comes before it

/// An upgrade that takes as long as over a real line, and shows.
DeviceBehaviour behaviourWith(const QString &fault)
{
    constexpr int kAnswerDelay = 25;
    DeviceBehaviour behaviour;
    behaviour.answerDelay = kAnswerDelay;
    behaviour.addFault(fault);
    return behaviour;
}

/// The simulated user in front of the program's window.
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

    /// The text that comes after a click, or the tool's own words, which are not known here.
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

    /// The text and the button are painted one after the other.
    void waitForLastText()
    {
        constexpr int kShortly = 1000;
        waitUntil([this] { return status() != WindowLook::kUpgrading; }, kShortly);
    }

    void click(const QPoint &position)
    {
        m_user.click(position);
        m_user.movePointer(kAside);
    }

    void save(const QString &name) { m_user.look().save(m_pictures + '/' + name); }

private:
    /// Nothing is waited for once the program has ended.
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

Demo::Demo(const QString &folder, const QString &fault)
    : m_folder(folder)
    , m_fault(fault)
    , m_device(m_testbed, behaviourWith(fault))
    , m_program(m_testbed)
{
    m_isValid = fault.isEmpty() || fault == "no-device" || fault == "no-package"
        || DeviceBehaviour().addFault(fault);
    m_program.setLog(folder + "/log");
    QObject::connect(&m_device, &SimulatedDevice::happened, &Demo::say);
}

QString Demo::help()
{
    return "  no-device            no device is plugged in\n"
           "  no-package           the firmware package is missing\n"
        + DeviceBehaviour::help();
}

int Demo::playForPerson()
{
    if (!openProgram()) {
        return 1;
    }
    say("click \"Start Upgrade\" in the window, and close it when you have seen enough");
    awaitEnd();
    if (!m_fault.isEmpty()) {
        say("demo: closed");
        return m_program.exitCode();
    }
    if (!isImageRight()) {
        say("demo: closed before the device was upgraded");
        return 1;
    }
    say("demo: upgraded, image verified");
    return 0;
}

int Demo::playWithUser(const QString &pictures)
{
    Watcher watcher(m_program, pictures);
    if (!openProgram() || !watcher.waitUntilEnabled(kPatience)) {
        say("demo: the program did not show its window");
        return 1;
    }
    watcher.save("idle.png");
    watcher.click(WindowLook::kUpgradeButton);
    say("clicked \"Start Upgrade\"");
    watcher.waitForNews();
    if (watcher.status() == WindowLook::kUpgrading) {
        say(QString("the window shows: ") + WindowLook::kUpgrading);
        watcher.waitForSomeProgress();
    }
    watcher.save("running.png");
    if (!watcher.waitUntilEnabled(kTimeOut)) {
        say("demo: the program did not come to an end of the upgrade");
        return 1;
    }
    watcher.waitForLastText();
    watcher.save("finished.png");
    const QString status = watcher.status();
    say("the window shows: " + (status.isNull() ? "the tool's error text" : status));

    watcher.click(WindowLook::kCloseButton);
    say("clicked the close button");
    awaitEnd();
    return verdict(status == WindowLook::kSuccess             ? Outcome::Success
                       : status == WindowLook::kNoDeviceFound ? Outcome::NoDevice
                                                              : Outcome::ToolFailed);
}

void Demo::stop()
{
    m_program.terminate();
}

Demo::Outcome Demo::expectedOutcome() const
{
    const QString name = m_fault.section('=', 0, 0);
    if (QStringList{"never-return", "late-return", "open-fails", "write-fails", "no-device"}
            .contains(name)) {
        return Outcome::NoDevice;
    }
    if (QStringList{"drop-out", "wrong-crc", "silent", "no-package"}.contains(name)) {
        return Outcome::ToolFailed;
    }
    return Outcome::Success;
}

bool Demo::openProgram()
{
    if (m_fault == "no-package") {
        QFile::remove(m_folder + "/dfu.zip");
    }
    if (m_fault != "no-device") {
        m_device.startInApplication();
    }
    if (!m_program.start(m_folder + "/fw-update", {}, m_folder)) {
        say("demo: " + m_folder + "/fw-update cannot be started");
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
        DfuPackage package;
        package.read(m_folder + "/dfu.zip");
        say("SHA-256 of the package's image: " + SimulatedDevice::sha256(package.firmware));
        say("SHA-256 of the device's image:  " + SimulatedDevice::sha256(m_device.image()));
    }
    if (outcome == Outcome::Success && !isImageRight()) {
        say("demo: the program reported success, but the image in the device is another one");
        return 1;
    }
    if (outcome != expectedOutcome()) {
        say("demo: that is not what should have been seen");
        return 1;
    }
    if (outcome == Outcome::Success) {
        say("demo: upgraded, image verified");
    } else {
        say("demo: failed as expected of \"" + m_fault + '"');
    }
    return 0;
}

bool Demo::isImageRight() const
{
    DfuPackage package;
    return package.read(m_folder + "/dfu.zip") == DfuPackage::Error::None
        && m_device.image() == package.firmware;
}

void Demo::say(const QString &line)
{
    QTextStream(stdout) << line << '\n';
}
