// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/vm/RealStage.h"

#include "simulator/demo/WindowLook.h"
#include "simulator/dfu/Checksum.h"

#include <QFile>

namespace {

constexpr int kLongest = 20000;

/// Removes the quotes and escapes of Qt's debug stream from \a text.
QString unquoted(QString text)
{
    text = text.mid(1, text.size() - 2);
    text.replace("\\n", "\n").replace("\\\"", "\"");
    return text;
}

} // namespace

RealStage::RealStage(Who who)
    : ProgramStage(FW_UPDATE_PROGRAM, STAND_IN_TOOL)
    , m_who(who)
{
    // Readable for everyone, like the folder of an installed program.
    QFile::setPermissions(path(""), QFile::Permissions(0x7755));
    m_process.setProcessEnvironment(usersEnvironment(QProcessEnvironment::systemEnvironment()));
    m_process.setWorkingDirectory(path(""));
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
    if (m_who == Who::Root) {
        m_process.start(program, QStringList());
    } else {
        m_process.start("setpriv", {"--reuid=1000", "--regid=1000", "--clear-groups", program});
    }
    return waitForWindow();
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
    user.click(WindowLook::kCloseButton);
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
    QStringList chunks;
    const QList<QByteArray> lines = log().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith(prefix)) {
            chunks.append(unquoted(QString::fromUtf8(line.mid(prefix.size()))));
        }
    }
    return chunks;
}
