// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QSize>
#include <QString>
#include <QTemporaryDir>

/// Plain pictures to see the kit's buttons by while a form is being drawn; they are painted when
/// first asked for and vanish with this object.
class SampleStrips
{
public:
    /// The path of a strip of \a count frames of \a frame pixels. Where nothing can be written
    /// there is no file, and a button shows nothing.
    QString path(const QSize &frame, int count);

private:
    QTemporaryDir m_folder;
};
