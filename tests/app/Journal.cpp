// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/app/Journal.h"

#include <QAccessible>
#include <QLabel>

// The offscreen platform has nobody who would switch accessibility on.
#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

namespace {

Journal *journal = nullptr;
const QLabel *watchedLabel = nullptr;
QStringList entries;
QAccessible::UpdateHandler otherUpdateHandler = nullptr;
QtMessageHandler otherMessageHandler = nullptr;

void noteText(QAccessibleEvent *event)
{
    if (event->object() == watchedLabel && event->type() == QAccessible::NameChanged) {
        entries.append("status: " + watchedLabel->text());
        if (journal->onStatus) {
            journal->onStatus(watchedLabel->text());
        }
    }
}

void noteLine(QtMsgType type, const QMessageLogContext &context, const QString &text)
{
    if (type == QtDebugMsg && qstrcmp(context.category, "default") == 0) {
        entries.append("log: " + text);
        if (journal->onLog) {
            journal->onLog();
        }
        return;
    }
    otherMessageHandler(type, context, text);
}

} // namespace

Journal::Journal(const QLabel *label)
{
    Q_ASSERT(watchedLabel == nullptr);
    journal = this;
    watchedLabel = label;
    entries.clear();
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(true);
    otherUpdateHandler = QAccessible::installUpdateHandler(noteText);
    otherMessageHandler = qInstallMessageHandler(noteLine);
}

Journal::~Journal()
{
    qInstallMessageHandler(otherMessageHandler);
    QAccessible::installUpdateHandler(otherUpdateHandler);
    watchedLabel = nullptr;
    journal = nullptr;
}

QStringList Journal::lines() const
{
    return entries;
}

QStringList Journal::statusTexts() const
{
    return withPrefix("status: ");
}

QStringList Journal::logLines() const
{
    return withPrefix("log: ");
}

void Journal::clear()
{
    entries.clear();
}

QStringList Journal::withPrefix(const QString &prefix) const
{
    QStringList found;
    for (const QString &line : qAsConst(entries)) {
        if (line.startsWith(prefix)) {
            found.append(line.mid(prefix.size()));
        }
    }
    return found;
}
