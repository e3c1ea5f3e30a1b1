// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QMainWindow>
#include <QPoint>
#include <QString>

#include <memory>

class CustomArea;
class CustomProgressBar;
class MButton;
class QLabel;
class QProcess;
class QTimer;

namespace Ui {
class MainWindow;
}

/// The program's one window, the upgrade behind its button and the watching of the vendor's tool.
///
/// It is frameless and 500 x 260 pixels; the user drags it by its top band. Everything runs on the
/// GUI thread, and the upgrade blocks it until the tool has been started. The user learns of the
/// outcome from the status line and from the upgrade button, which is disabled while an upgrade
/// runs; nothing else is reported.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);
    /// Leaves a running tool and its timer alone: closing the window must not cut off a device
    /// that is being flashed.
    ~MainWindow() override;

    /// Whether the user drags the window by its band at this moment.
    bool isDragging() const { return m_dragging; }

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;

private slots:
    void slot_click_sysbtn_close();
    void slot_click_firmwareupgrade();
    void onReadyReadStandardOutput();
    void onReadyReadStandardError();
    void onTimerProcessOutput();

private:
    void init_ui();
    void uninit_ui();
    void firmwareUpgrade();
    void chmodNrfutil();
    QString GetDevUsbmodem();

    void startTool(const QString &port);
    void finishOnSuccess(const QByteArray &output);

    std::unique_ptr<Ui::MainWindow> ui;
    CustomArea *m_backgroundArea = nullptr;
    QLabel *m_titleLabel = nullptr;
    QLabel *m_statusLabel = nullptr;
    MButton *m_closeButton = nullptr;
    MButton *m_upgradeButton = nullptr;
    CustomProgressBar *m_progressBar = nullptr;
    // These two have no parent: the tool's process lives until the next upgrade begins, the timer
    // until success. What is left when the window goes is left alone.
    QProcess *m_process = nullptr;
    QTimer *m_timer = nullptr;
    int m_progressCount = 0;
    int m_dragAreaHeight = 90;
    QPoint m_dragOffset;
    bool m_dragging = false;
};
