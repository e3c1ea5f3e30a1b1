// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class Gallery;

/// The pictures in the kit's manual: the card of each class, and how its pictures are cut.
namespace DocumentPictures {

/// Saves <class>.png and, for a class with pictures, <class>-strip.png in \a folder, which is
/// created if necessary. Returns false if a file cannot be written.
bool save(const Gallery &gallery, const QString &folder);

} // namespace DocumentPictures
