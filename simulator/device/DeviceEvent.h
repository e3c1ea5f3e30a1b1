// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QString>

/// Something that happened to a simulated device.
struct DeviceEvent
{
    QString name; ///< For scripts.
    QString text; ///< For people, in one line.
    QJsonObject details = {};

    /// The name and the details as one line of JSON.
    QByteArray toJson() const
    {
        QJsonObject all = details;
        all.insert("event", name);
        return QJsonDocument(all).toJson(QJsonDocument::Compact);
    }
};
