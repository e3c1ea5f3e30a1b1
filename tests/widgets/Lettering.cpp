// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "tests/widgets/Lettering.h"

#include <QGuiApplication>
#include <QPainter>
#include <QScreen>
#include <QtTest>

QImage Lettering::on(QImage ground, const QString &text) const
{
    // A picture has a resolution of its own, which makes letters smaller or larger.
    constexpr double kMetresPerInch = 0.0254;
    const QScreen *screen = QGuiApplication::primaryScreen();
    ground.setDotsPerMeterX(qRound(screen->logicalDotsPerInchX() / kMetresPerInch));
    ground.setDotsPerMeterY(qRound(screen->logicalDotsPerInchY() / kMetresPerInch));
    QPainter painter(&ground);
    painter.setFont(QFont("Arial", 12));
    painter.setPen(ink);
    painter.drawText(rect, flags, text);
    painter.end();
    return ground;
}

void Lettering::makeArialStandOut()
{
    QFont::insertSubstitution("Arial", "DejaVu Sans Mono");
}

void Lettering::addWidgetFonts()
{
    QTest::addColumn<QFont>("font");

    const auto addRow = [](const char *name, const auto &change) {
        QFont font;
        change(font);
        QTest::newRow(name) << font;
    };
    addRow("large", [](QFont &font) { font.setPointSize(40); });
    addRow("another family", [](QFont &font) { font.setFamily("DejaVu Serif"); });
    addRow("bold", [](QFont &font) { font.setBold(true); });
    addRow("italic", [](QFont &font) { font.setItalic(true); });
    addRow("underlined", [](QFont &font) { font.setUnderline(true); });
    addRow("overlined", [](QFont &font) { font.setOverline(true); });
    addRow("struck out", [](QFont &font) { font.setStrikeOut(true); });
    addRow("stretched", [](QFont &font) { font.setStretch(QFont::UltraExpanded); });
    addRow("lower case", [](QFont &font) { font.setCapitalization(QFont::AllLowercase); });
    addRow("spaced letters", [](QFont &font) { font.setLetterSpacing(QFont::AbsoluteSpacing, 3); });
    addRow("spaced words", [](QFont &font) { font.setWordSpacing(9); });
    addRow("jagged", [](QFont &font) { font.setStyleStrategy(QFont::NoAntialias); });
}
