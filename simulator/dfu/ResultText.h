// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QByteArray>
#include <QString>

namespace Dfu {

/// Says in a few words why a device refused a request. \a result is a Result, followed by an
/// ExtendedResult if it is ExtendedError.
QString resultText(const QByteArray &result);

} // namespace Dfu
