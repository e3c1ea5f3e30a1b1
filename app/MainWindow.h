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

/// The program's only window. Runs the upgrade and watches the vendor's tool.
///
/// The window has no frame and a size of 500 x 260 pixels; the user drags it by its top band. All
/// code runs on the GUI thread, which an upgrade blocks until the tool has been started. Results
/// are shown only in the status line and by the upgrade button, which is disabled during an
/// upgrade.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget *parent = nullptr);
    /// Does not stop a running tool, since that would interrupt the flashing of a device.
    ~MainWindow() override;

    /// Whether the user drags the window by its band at this moment.
    bool isDragging() const { return m_dragging; }

    /// The line with the state of the upgrade.
    const QLabel *statusLabel() const { return m_statusLabel; }

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
    // Neither has a parent. The process lives until the next upgrade begins, the timer until
    // success; the window's destructor deletes neither.
    QProcess *m_process = nullptr;
    QTimer *m_timer = nullptr;
    int m_progressCount = 0;
    int m_dragAreaHeight = 90;
    QPoint m_dragOffset;
    bool m_dragging = false;
};
