// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "benchmarks/driver/Report.h"

#include <QFile>
#include <QSettings>
#include <QSysInfo>
#include <QThread>
#include <QXmlStreamWriter>

#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

QString number(double value)
{
    const double size = std::abs(value);
    const int decimals = size >= 100 || value == std::floor(value) ? 0 : size >= 10 ? 1 : 2;
    return QString::number(value, 'f', decimals);
}

QString seriesText(const Series &series)
{
    const QString lower = number(series.lowerQuartile());
    const QString upper = number(series.upperQuartile());
    const QString median = number(series.median());
    return lower == upper ? median : QString("%1 (%2–%3)").arg(median, lower, upper);
}

QString ratioText(const Row &row)
{
    return row.hasFloor() ? QString::number(row.ratio(), 'f', 2) : QString("–");
}

QString targetText(const Row &row)
{
    if (row.kind == Row::Information) {
        return "–";
    }
    return row.hasFloor() ? QString("≤ %1 ×").arg(row.target, 0, 'f', 2)
                          : QString("≤ %1").arg(number(row.target));
}

QString verdict(const Row &row)
{
    if (row.kind == Row::Information) {
        return "–";
    }
    return QString(row.isMet() ? "met" : "**missed**") + (row.kind == Row::Gate ? ", gate" : "");
}

/// Writes the few shapes that the picture needs as SVG.
class Canvas
{
public:
    Canvas(QByteArray *out, int width, int height)
        : m_xml(out)
    {
        m_xml.setAutoFormatting(true);
        m_xml.writeStartDocument();
        m_xml.writeStartElement("svg");
        m_xml.writeDefaultNamespace("http://www.w3.org/2000/svg");
        m_xml.writeAttribute("viewBox", QString("0 0 %1 %2").arg(width).arg(height));
        m_xml.writeAttribute("font-family", "sans-serif");
        m_xml.writeAttribute("font-size", "13");
        rectangle(0, 0, width, height, "#ffffff");
    }

    void rectangle(double x, double y, double width, double height, const QString &colour)
    {
        m_xml.writeEmptyElement("rect");
        m_xml.writeAttribute("x", QString::number(x));
        m_xml.writeAttribute("y", QString::number(y));
        m_xml.writeAttribute("width", QString::number(width));
        m_xml.writeAttribute("height", QString::number(height));
        m_xml.writeAttribute("fill", colour);
    }

    void text(double x, double y, const QString &text, const QString &anchor = "start")
    {
        m_xml.writeStartElement("text");
        m_xml.writeAttribute("x", QString::number(x));
        m_xml.writeAttribute("y", QString::number(y));
        m_xml.writeAttribute("text-anchor", anchor);
        m_xml.writeAttribute("fill", "#202020");
        m_xml.writeCharacters(text);
        m_xml.writeEndElement();
    }

    void end() { m_xml.writeEndDocument(); }

private:
    QXmlStreamWriter m_xml;
};

} // namespace

QString Report::machine()
{
    QSettings release("/etc/os-release", QSettings::IniFormat);
    const double gigabytes = static_cast<double>(sysconf(_SC_PHYS_PAGES))
        * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1024.0 * 1024 * 1024);
    QFile cpu("/proc/cpuinfo");
    const bool isVirtual = cpu.open(QIODevice::ReadOnly) && cpu.readAll().contains(" hypervisor");
    return QString("%1 with %2 %3 cores and %4 GB of memory, %5, Qt %6, under Xvfb")
        .arg(isVirtual ? "A shared virtual machine" : "A machine")
        .arg(QThread::idealThreadCount())
        .arg(QSysInfo::currentCpuArchitecture())
        .arg(std::lround(gigabytes))
        .arg(release.value("PRETTY_NAME").toString(), QString::fromLatin1(qVersion()));
}

QString Report::table(const Rows &rows)
{
    QString text = "| What | Unit | Ours | Floor | | Ratio | Target | |\n"
                   "|---|---|---:|---:|---|---:|---:|---|\n";
    for (const Row &row : rows) {
        text += QString("| %1 | %2 | %3 | %4 | %5 | %6 | %7 | %8 |\n")
                    .arg(row.what, row.unit, seriesText(row.ours),
                         row.hasFloor() ? seriesText(row.floor) : "–", row.floorName,
                         ratioText(row), targetText(row), verdict(row));
    }
    return text;
}

QByteArray Report::picture(const Rows &rows)
{
    constexpr int kLabels = 390;
    constexpr int kScale = 260; // pixels for a ratio of 1
    constexpr double kLargest = 1.6;
    constexpr int kStep = 24;
    constexpr int kTop = 50;

    Rows shown;
    std::copy_if(rows.begin(), rows.end(), std::back_inserter(shown),
                 [](const Row &row) { return row.hasFloor() && row.kind != Row::Information; });
    QByteArray svg;
    const int height = kTop + static_cast<int>(shown.size()) * kStep + 10;
    Canvas canvas(&svg, kLabels + static_cast<int>(kScale * kLargest) + 110, height);
    canvas.text(
        12, 22,
        "FW Update compared with its floors: ratio of the medians; the black mark is the target");
    canvas.text(kLabels + kScale, kTop - 6, "1", "middle");
    canvas.rectangle(kLabels + kScale, kTop, 1, height - kTop - 10, "#a0a0a0");
    for (int i = 0; i < shown.size(); ++i) {
        const Row &row = shown.at(i);
        const int y = kTop + i * kStep;
        const double length = kScale * std::min(row.ratio(), kLargest);
        canvas.text(kLabels - 10, y + 16, row.what + " / " + row.floorName, "end");
        canvas.rectangle(kLabels, y + 4, length, kStep - 8, row.isMet() ? "#12a8a3" : "#d0503c");
        canvas.rectangle(kLabels + kScale * std::min(row.target, kLargest) - 1, y + 2, 2, kStep - 4,
                         "#000000");
        canvas.text(kLabels + std::max(length, kScale * std::min(row.target, kLargest)) + 10,
                    y + 16, ratioText(row));
    }
    canvas.end();
    return svg;
}
