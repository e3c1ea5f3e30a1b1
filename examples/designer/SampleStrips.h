// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QSize>
#include <QString>
#include <QTemporaryDir>

/// Plain sample pictures for the kit's buttons in Designer. They are created on demand and deleted
/// with this object.
class SampleStrips
{
public:
    /// The path of a strip with \a count frames of \a frame pixels. If the file cannot be written,
    /// buttons show nothing.
    QString path(const QSize &frame, int count);

private:
    QTemporaryDir m_folder;
};
