// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "examples/gallery/Specimens.h"

#include "widgets/ColorButton.h"
#include "widgets/CustomProgressBar.h"
#include "widgets/FuncButton.h"
#include "widgets/IconButton.h"
#include "widgets/ImageButton.h"
#include "widgets/MButton.h"
#include "widgets/ProfileButton.h"
#include "widgets/SwitchButton.h"
#include "widgets/tabButton.h"

#include <QCoreApplication>
#include <QMouseEvent>

QString Specimens::path(const QString &name)
{
    return ":/gallery/" + name;
}

MButton *Specimens::stretchedButton(QWidget *parent, const QString &caption)
{
    constexpr int kBorder = 18; // half the height, so that the unpainted centre is empty

    auto *button = new MButton(parent);
    button->setPixmap(path("action.png"), kBorder);
    button->setText(caption);
    button->setFixedSize(90, 36);
    return button;
}

MButton *Specimens::plainButton(QWidget *parent)
{
    auto *button = new MButton(parent);
    button->setPixmap(path("close.png"), 0);
    button->setFixedSize(36, 36);
    return button;
}

ImageButton *Specimens::imageButton(QWidget *parent)
{
    auto *button = new ImageButton(parent);
    button->setPixmap(path("play.png"));
    button->setFixedSize(52, 52);
    return button;
}

tabButton *Specimens::tab(QWidget *parent, const QString &caption)
{
    auto *button = new tabButton(parent);
    button->setPixmap(path("tab.png"));
    button->setTabText(caption);
    button->setFixedSize(88, 44);
    return button;
}

ColorButton *Specimens::swatch(QWidget *parent, const QColor &color)
{
    auto *button = new ColorButton(parent);
    button->setColor(color);
    button->setFixedSize(40, 28);
    return button;
}

FuncButton *Specimens::functionButton(QWidget *parent, const QString &caption)
{
    auto *button = new FuncButton(parent, caption);
    button->setPixmap(path("func-normal.png"), path("func-active.png"));
    button->setFixedSize(84, 84);
    return button;
}

IconButton *Specimens::iconButton(QWidget *parent, const QString &caption)
{
    auto *button = new IconButton(parent, caption);
    button->setBkgPixmap(path("icon-background.png"), 3);
    button->setIconPixmap(path("icon-icon.png"), 3, QRect(14, 12, 20, 20));
    button->setFixedSize(116, 44);
    return button;
}

ProfileButton *Specimens::profileButton(QWidget *parent, const QString &caption)
{
    auto *button = new ProfileButton(parent, caption);
    button->setBkgPixmap(path("profile-background.png"), 3);
    button->setIconPixmap(path("profile-icon.png"), 1, QRect(8, 8, 28, 28));
    button->setFixedSize(116, 44);
    return button;
}

SwitchButton *Specimens::lightSwitch(QWidget *parent, bool on)
{
    auto *button = new SwitchButton(parent);
    button->setPixmap(path("switch-on.png"), path("switch-off.png"));
    button->setCheck(on);
    button->setFixedSize(56, 30);
    return button;
}

CustomProgressBar *Specimens::progressBar(QWidget *parent, int width, int value)
{
    auto *bar = new CustomProgressBar(parent);
    bar->setValue(value);
    bar->setFixedSize(width, 22);
    return bar;
}

void Specimens::freeze(QAbstractButton *button, Look look)
{
    button->setFocusPolicy(Qt::NoFocus);
    if (look != Look::Normal) {
        const QPointF center = button->rect().center();
        QEnterEvent enter(center, center, center);
        QCoreApplication::sendEvent(button, &enter);
    }
    if (look == Look::Pressed) {
        const QPointF center = button->rect().center();
        QMouseEvent press(QEvent::MouseButtonPress, center, center, Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(button, &press);
    }
    button->setAttribute(Qt::WA_TransparentForMouseEvents);
}
