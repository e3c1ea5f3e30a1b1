// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "simulator/device/DeviceSettings.h"

#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QJsonParseError>
#include <QRegularExpression>

#include <limits>
#include <optional>
#include <utility>

namespace {

/// Returns whether the values are valid.
using Apply = bool (*)(const QStringList &values, DeviceDescription &device);

struct Setting
{
    const char *name;
    const char *value; ///< What follows the option; null for a switch.
    const char *explanation;
    const char *expected; ///< For the message about a wrong value.
    Apply apply;
};

std::optional<int> hexNumber(const QString &digits)
{
    bool isNumber = false;
    const int number = digits.toInt(&isNumber, 16);
    return isNumber && number >= 0 && number <= 0xFFFF ? std::optional(number) : std::nullopt;
}

bool setPair(const QString &text, int *first, int *second)
{
    const auto firstNumber = hexNumber(text.section(':', 0, 0));
    const auto secondNumber = hexNumber(text.section(':', 1));
    *first = firstNumber.value_or(0);
    *second = secondNumber.value_or(0);
    return firstNumber && secondNumber;
}

template <typename Number>
bool setNumber(const QString &text, Number *number, Number min = 0,
               Number max = std::numeric_limits<Number>::max())
{
    const bool isHex = text.startsWith("0x");
    bool isNumber = false;
    const qlonglong value
        = isHex ? text.mid(2).toLongLong(&isNumber, 16) : text.toLongLong(&isNumber);
    *number = static_cast<Number>(value);
    return isNumber && value >= qlonglong(min) && value <= qlonglong(max);
}

bool setReport(const QString &digits, QByteArray *report)
{
    *report = QByteArray::fromHex(digits.toLatin1());
    return !report->isEmpty() && QString(report->toHex()) == digits.toLower();
}

bool setKey(const QString &path, PublicKey *key)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly)) {
        *key = PublicKey::fromPem(file.readAll());
    }
    return !key->isNull();
}

bool setStart(const QString &state, DeviceDescription::Start *start)
{
    const QStringList states = {"application", "bootloader", "absent"};
    *start = static_cast<DeviceDescription::Start>(states.indexOf(state));
    return states.contains(state);
}

bool addFaults(const QStringList &faults, DeviceBehaviour *behaviour)
{
    bool areKnown = true;
    for (const QString &fault : faults) {
        areKnown = behaviour->addFault(fault) && areKnown;
    }
    return areKnown;
}

constexpr auto kIds = "two hexadecimal numbers, such as 7F3C:0C51";
constexpr auto kTime = "a number of milliseconds";
constexpr auto kVersion = "a number from 0 to 4294967295";

const Setting kSettings[] = {
    {"app-id", "VENDOR:PRODUCT", "The USB ids while the application runs.", kIds,
     [](const QStringList &values, DeviceDescription &device) {
         return setPair(values.last(), &device.identity.vendorId, &device.identity.applicationId);
     }},
    {"bootloader-id", "PRODUCT", "The USB product id while the bootloader runs.",
     "a hexadecimal number, such as 0C52",
     [](const QStringList &values, DeviceDescription &device) {
         device.identity.bootloaderId = hexNumber(values.last()).value_or(-1);
         return device.identity.bootloaderId >= 0;
     }},
    {"usage", "PAGE:USAGE", "The usage page and usage of the HID interface.",
     "two hexadecimal numbers, such as FF31:74",
     [](const QStringList &values, DeviceDescription &device) {
         return setPair(values.last(), &device.identity.usagePage, &device.identity.usage)
             && device.identity.usage <= 0xFF;
     }},
    {"report", "BYTES", "The first bytes of the report that makes it leave, with the report id.",
     "hexadecimal digits, such as AABB",
     [](const QStringList &values, DeviceDescription &device) {
         return setReport(values.last(), &device.identity.enterBootloader);
     }},
    {"report-size", "N", "The size of that report in bytes, with the report id.",
     "a number from 2 to 256",
     [](const QStringList &values, DeviceDescription &device) {
         return setNumber(values.last(), &device.identity.reportSize, 2, 256);
     }},
    {"port", "NODE", "The node of the bootloader's serial port. Can be repeated.",
     "a file in /dev, such as /dev/ttyACM0",
     [](const QStringList &values, DeviceDescription &device) {
         device.behaviour.ports = values;
         return values.filter(QRegularExpression("^/dev/[^/]")).size() == values.size();
     }},
    {"return-after", "MS", "The duration of the restart into the bootloader.", kTime,
     [](const QStringList &values, DeviceDescription &device) {
         return setNumber(values.last(), &device.behaviour.returnAfter);
     }},
    {"answer-delay", "MS", "The bootloader's delay before each response.", kTime,
     [](const QStringList &values, DeviceDescription &device) {
         return setNumber(values.last(), &device.behaviour.answerDelay);
     }},
    {"fault", "NAME[=VALUE]", "Simulates a fault. Can be repeated.", "one of the names in --help",
     [](const QStringList &values, DeviceDescription &device) {
         return addFaults(values, &device.behaviour);
     }},
    {"hardware-version", "N", "The version of the hardware that packages must be for.", kVersion,
     [](const QStringList &values, DeviceDescription &device) {
         return setNumber(values.last(), &device.bootloader.hardwareVersion);
     }},
    {"firmware-version", "N", "The version of the installed firmware; older packages are refused.",
     kVersion,
     [](const QStringList &values, DeviceDescription &device) {
         return setNumber(values.last(), &device.bootloader.firmwareVersion);
     }},
    {"softdevice", "ID", "The id of the installed SoftDevice, such as 0x100; 0 for none.", kVersion,
     [](const QStringList &values, DeviceDescription &device) {
         return setNumber(values.last(), &device.bootloader.softDeviceId);
     }},
    {"key", "FILE", "The public key that checks the signatures of packages.",
     "a PEM file with a public key for ECDSA P-256 or Ed25519",
     [](const QStringList &values, DeviceDescription &device) {
         return setKey(values.last(), &device.bootloader.key);
     }},
    {"require-signature", nullptr, "Refuses packages without a signature.", "true or false",
     [](const QStringList &, DeviceDescription &device) {
         device.bootloader.signatureRequired = true;
         return true;
     }},
    {"start", "STATE", "The initial state of the device: application, bootloader or absent.",
     "application, bootloader or absent",
     [](const QStringList &values, DeviceDescription &device) {
         return setStart(values.last(), &device.start);
     }},
};

QString textOf(const QJsonValue &value)
{
    constexpr int kDigits = 17; // of a double
    return value.isDouble() ? QString::number(value.toDouble(), 'g', kDigits) : value.toString();
}

/// The value of an option; nothing if \a value cannot be one.
std::optional<QStringList> textsOf(const QJsonValue &value)
{
    QStringList texts;
    const QJsonArray all = value.isArray() ? value.toArray() : QJsonArray{value};
    for (const auto &one : all) {
        const QString text = textOf(one);
        if (text.isEmpty()) {
            return std::nullopt;
        }
        texts.append(text);
    }
    return texts.isEmpty() ? std::nullopt : std::optional(texts);
}

} // namespace

DeviceSettings::DeviceSettings(QStringList names)
    : m_names(std::move(names))
{ }

QStringList DeviceSettings::allNames()
{
    QStringList names;
    for (const Setting &setting : kSettings) {
        names.append(setting.name);
    }
    return names;
}

void DeviceSettings::addOptions(QCommandLineParser &parser) const
{
    parser.addOption({"device", "Reads the options below from a JSON file.", "FILE"});
    for (const Setting &setting : kSettings) {
        if (m_names.contains(setting.name)) {
            parser.addOption({setting.name, setting.explanation, setting.value});
        }
    }
}

bool DeviceSettings::read(const QCommandLineParser &parser, DeviceDescription *description)
{
    Values values;
    if (parser.isSet("device") && !readFile(parser.value("device"), &values)) {
        return false;
    }
    for (const QString &name : m_names) {
        if (parser.isSet(name)) {
            values[name] = parser.values(name);
        }
    }
    for (const Setting &setting : kSettings) {
        if (values.contains(setting.name)
            && !setting.apply(values.value(setting.name), *description)) {
            return fail(QString("%1 must be %2").arg(setting.name, setting.expected));
        }
    }
    return true;
}

bool DeviceSettings::readFile(const QString &path, Values *values)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        return fail(path + ": " + file.errorString());
    }
    QJsonParseError error = {};
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll(), &error);
    if (!document.isObject()) {
        return fail(path + " is not a JSON object: " + error.errorString());
    }
    const QJsonObject object = document.object();
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        if (!m_names.contains(entry.key())) {
            return fail(QString("%1: unknown setting \"%2\"").arg(path, entry.key()));
        }
        if (entry->isBool() && entry.key() == "require-signature") {
            if (entry->toBool()) {
                values->insert(entry.key(), {});
            }
            continue;
        }
        const auto texts = textsOf(*entry);
        if (!texts || entry.key() == "require-signature") {
            return fail(QString("%1: the value of \"%2\" is wrong").arg(path, entry.key()));
        }
        values->insert(entry.key(), *texts);
    }
    if (values->contains("key")) {
        const QDir folder = QFileInfo(path).absoluteDir();
        (*values)["key"] = QStringList(folder.filePath(values->value("key").last()));
    }
    return true;
}

bool DeviceSettings::fail(const QString &error)
{
    m_error = error;
    return false;
}
