// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include <QImageIOPlugin>
#include <QObject>
#include <QStylePlugin>
#include <qpa/qplatforminputcontextplugin_p.h>
#include <qpa/qplatformthemeplugin.h>

/// A plugin of a desktop, as far as Qt can tell before it loads it; the build says of which kind.
class PluginProbe : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID PROBE_INTERFACE FILE "PluginProbe.json")
};

#include "PluginProbe.moc"
