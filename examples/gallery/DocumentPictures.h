// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QString>

class Gallery;

/// The pictures of the kit's manual: the card of each class, and how its pictures are cut.
namespace DocumentPictures {

/// Saves <class>.png and, for a class with pictures, <class>-strip.png into \a folder, which is
/// made if it is missing. False if one of them cannot be written.
bool save(Gallery &gallery, const QString &folder);

} // namespace DocumentPictures
