// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/vm/RealStage.h"

#include "simulator/demo/WindowLook.h"
#include "simulator/dfu/Checksum.h"

#include <QFile>

namespace {

constexpr int kLongest = 20000;
constexpr QPoint kElsewhere(1000, 700);
constexpr int kStatusTop = 100;
constexpr int kStatusHeight = 30;

/// Removes the quotes and escapes of Qt's debug stream from \a text.
QString unquoted(QString text)
{
    text = text.mid(1, text.size() - 2);
    text.replace("\\n", "\n").replace("\\\"", "\"");
    return text;
}

} // namespace

RealStage::RealStage(Who who)
    : package(DfuPackage::generate(50000))
    , m_who(who)
    , m_user("FW Update")
{
    // Readable for everyone, like the folder of an installed program.
    QFile::setPermissions(m_folder.path(), QFile::Permissions(0x7755));
    QFile::copy(FW_UPDATE_PROGRAM, path("fw-update"));
    QFile::copy(STAND_IN_TOOL, path("nrfutil-mac"));
    if (package.write(path("dfu.zip")) != DfuPackage::Error::None) {
        qFatal("cannot write the package");
    }
    // Users do not set this, and it changes the look of the program.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove("QT_FONT_DPI");
    m_process.setProcessEnvironment(environment);
    m_process.setWorkingDirectory(m_folder.path());
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardOutputFile(path("log"));
}

RealStage::~RealStage()
{
    m_process.kill();
    m_process.waitForFinished();
}

bool RealStage::open()
{
    const QString program = path("fw-update");
    m_user.movePointerOnScreen(kElsewhere);
    if (m_who == Who::Root) {
        m_process.start(program, QStringList());
    } else {
        m_process.start("setpriv", {"--reuid=1000", "--regid=1000", "--clear-groups", program});
    }
    return ScreenUser::waitUntil([this] { return isUpgradeEnabled(); }, kLongest);
}

void RealStage::clickUpgrade()
{
    m_user.click(WindowLook::kUpgradeButton);
    m_user.movePointerOnScreen(kElsewhere);
}

QString RealStage::status()
{
    const QImage window = m_user.look();
    const QImage line = window.copy(0, kStatusTop, window.width(), kStatusHeight);
    // Recognising a text takes long on a slow machine, so the last one is cached.
    if (line != m_lastLine) {
        m_lastLine = line;
        m_lastStatus = WindowLook::statusText(window, {lastErrorText()});
    }
    return m_lastStatus;
}

int RealStage::progress()
{
    return WindowLook::progress(m_user.look());
}

bool RealStage::isUpgradeEnabled()
{
    return WindowLook::isUpgradeEnabled(m_user.look());
}

QString RealStage::errorText() const
{
    return errorChunks().join("");
}

QString RealStage::lastErrorText() const
{
    const QStringList chunks = errorChunks();
    return chunks.isEmpty() ? QString() : chunks.last();
}

bool RealStage::close()
{
    m_user.click(WindowLook::kCloseButton);
    return m_process.waitForFinished(kLongest) && m_process.exitStatus() == QProcess::NormalExit
        && m_process.exitCode() == 0;
}

QByteArray RealStage::imageHash() const
{
    return Checksum::sha256(package.firmware);
}

QStringList RealStage::errorChunks() const
{
    const QByteArray prefix = "Standard Error: ";
    QFile file(path("log"));
    QStringList chunks;
    if (!file.open(QIODevice::ReadOnly)) {
        return chunks;
    }
    while (!file.atEnd()) {
        const QByteArray line = file.readLine().trimmed();
        if (line.startsWith(prefix)) {
            chunks.append(unquoted(QString::fromUtf8(line.mid(prefix.size()))));
        }
    }
    return chunks;
}
