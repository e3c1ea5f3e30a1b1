// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#include "app/MainWindow.h"

#include "app/ui_MainWindow.h"
#include "device/DeviceComm.h"
#include "widgets/CustomArea.h"
#include "widgets/CustomProgressBar.h"
#include "widgets/MButton.h"
#include "widgets/QtCompat.h"

#include <QCoreApplication>
#include <QDebug>
#include <QLabel>
#include <QMouseEvent>
#include <QProcess>
#include <QSerialPortInfo>
#include <QThread>
#include <QTimer>

namespace {

/// The UTF-8 text in \a chunk, up to the first zero byte, where Qt 6 by itself would not stop.
QString textOf(const QByteArray &chunk)
{
    return QString::fromUtf8(chunk.constData());
}

} // namespace

MainWindow::MainWindow(QWidget *parent)
    : QMainWindow(parent)
    , ui(std::make_unique<Ui::MainWindow>())
{
    ui->setupUi(this);
    init_ui();
}

MainWindow::~MainWindow() = default;

void MainWindow::mousePressEvent(QMouseEvent *event)
{
    if (event->pos().y() < m_dragAreaHeight && event->button() == Qt::LeftButton) {
        m_dragOffset = QtCompat::globalPosition(*event).toPoint() - frameGeometry().topLeft();
        m_dragging = true;
    }
}

void MainWindow::mouseReleaseEvent(QMouseEvent * /*event*/)
{
    m_dragging = false;
    m_dragOffset = QPoint(0, 0);
}

void MainWindow::mouseMoveEvent(QMouseEvent *event)
{
    // With the pointer below the band, the window waits until it comes back into the band.
    if (!m_dragging || event->pos().y() >= m_dragAreaHeight) {
        return;
    }
    move(QtCompat::globalPosition(*event).toPoint() - m_dragOffset);
}

void MainWindow::slot_click_sysbtn_close()
{
    close();
    if (m_timer != nullptr) {
        m_timer->stop();
    }
}

void MainWindow::slot_click_firmwareupgrade()
{
    firmwareUpgrade();
}

void MainWindow::onReadyReadStandardOutput()
{
    // The first of this slot and the timer's takes the whole chunk and searches it alone. Neither
    // keeps any of it, so a phrase that is split between two chunks is not found.
    const QByteArray output = m_process->readAllStandardOutput();
    finishOnSuccess(output);
    qDebug() << "Standard Output:" << output;
}

void MainWindow::onReadyReadStandardError()
{
    const QByteArray text = m_process->readAllStandardError();
    qDebug() << "Standard Error:" << text;
    m_upgradeButton->setEnabled(true);
    m_statusLabel->setText(textOf(text));
}

void MainWindow::onTimerProcessOutput()
{
    constexpr int kStep = 5;
    constexpr int kModulus = 10005;
    constexpr int kTimeOut = 9101;

    m_progressCount = (m_progressCount + kStep) % kModulus;
    m_progressBar->setValue(m_progressCount);
    if (m_progressCount >= kTimeOut) {
        // The timer of an earlier upgrade may still tick once the current one has been deleted.
        if (m_timer != nullptr) {
            m_timer->stop();
        }
        // The status text stays, since the tool may still succeed.
        m_upgradeButton->setEnabled(true);
    }
    // It may also tick once a later upgrade has deleted the process and found no port.
    const QByteArray output = m_process != nullptr ? m_process->readAllStandardOutput() : "";
    qDebug() << "Standard Output:" << output;
    finishOnSuccess(output);
}

void MainWindow::init_ui()
{
    const QColor background(0x0f, 0x17, 0x1d);

    setWindowTitle("FW Update");
    setWindowFlags(Qt::FramelessWindowHint);
    setFixedSize(500, 260);
    setPalette(QPalette(background));
    setAutoFillBackground(true);

    // Created first, so that all other widgets lie above it.
    m_backgroundArea = new CustomArea(this);
    m_backgroundArea->setAreaColor(background);
    m_backgroundArea->setGeometry(0, 0, width(), height());

    m_closeButton = new MButton(this);
    m_closeButton->setPixmap(":/images/img_close.png", 0);
    m_closeButton->setGeometry(width() - 45, 12, 30, 30);
    // The spelling stays: the tool tip is also the name by which screen readers know the button.
    m_closeButton->setToolTip("close Winodw");
    m_closeButton->setCursor(Qt::PointingHandCursor);
    m_closeButton->show();

    QFont font;
    font.setPointSize(16);

    m_titleLabel = new QLabel(this);
    m_titleLabel->setFont(font);
    m_titleLabel->setText("Firmware Upgrade");
    m_titleLabel->setAlignment(Qt::AlignCenter);
    m_titleLabel->setStyleSheet("color:#f0f0f0;");
    m_titleLabel->setGeometry(width() / 2 - 80, 20, 160, 30);
    m_titleLabel->show();

    m_statusLabel = new QLabel(this);
    m_statusLabel->setTextFormat(Qt::PlainText); // the tool's text may look like markup
    m_statusLabel->setFont(font);
    m_statusLabel->setText("");
    m_statusLabel->setStyleSheet("color:#ffffff;");
    m_statusLabel->setAlignment(Qt::AlignCenter);
    m_statusLabel->setGeometry(width() / 2 - 215, 100, 430, 30);
    m_statusLabel->show();

    m_progressBar = new CustomProgressBar(this);
    m_progressBar->setGeometry(width() / 2 - 215, 150, 430, 30);
    m_progressBar->setAccessibleName("Upgrade progress");
    m_progressBar->show();

    m_upgradeButton = new MButton(this);
    m_upgradeButton->setFont(font);
    m_upgradeButton->setPixmap(":/images/img_button.png", 18);
    m_upgradeButton->setText("Start Upgrade");
    m_upgradeButton->setColor(Qt::white, Qt::white, Qt::white);
    m_upgradeButton->setGeometry(width() / 2 - 80, 200, 160, 36);
    m_upgradeButton->setCursor(Qt::PointingHandCursor);
    m_upgradeButton->show();

    connect(m_closeButton, SIGNAL(clicked()), this, SLOT(slot_click_sysbtn_close()));
    connect(m_upgradeButton, SIGNAL(clicked()), this, SLOT(slot_click_firmwareupgrade()));
}

void MainWindow::uninit_ui() { }

void MainWindow::firmwareUpgrade()
{
    m_upgradeButton->setEnabled(false);
    m_progressCount = 0;
    m_progressBar->setValue(0);
    delete m_process; // kills a tool that still runs
    m_process = nullptr;
    // The timer of the last upgrade is not stopped: if it runs, it ticks along with the next one.
    m_statusLabel->setText("Start Upgrade");
    chmodNrfutil();

    QString port = GetDevUsbmodem();
    if (port.isEmpty()) {
        DeviceComm::GetInst().startUpdate(0x7F3C, 0x0C51);
        QThread::sleep(2); // the device restarts into its bootloader
        port = GetDevUsbmodem();
        if (port.isEmpty()) {
            m_statusLabel->setText("Find Upgrade Device Error!");
            m_upgradeButton->setEnabled(true);
            return;
        }
    }
    m_statusLabel->setText("Upgrading, please do not plug or unplug the device!");
    startTool(port);
}

void MainWindow::chmodNrfutil()
{
    QProcess chmod;
    // Unlike the path by which the tool is started, this one is relative to the working directory:
    // chmod reaches the tool only if the program was started from its own folder.
    chmod.start("chmod", {"+x", "./nrfutil-mac"}, QIODevice::ReadWrite);
    chmod.waitForFinished(30000);
    qDebug() << "Output:" << chmod.readAllStandardOutput();
    qDebug() << "Error:" << chmod.readAllStandardError();
    m_statusLabel->setText("Init Upgrade success!");
}

QString MainWindow::GetDevUsbmodem()
{
    const QList<QSerialPortInfo> ports = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo &port : ports) {
        if (port.systemLocation().contains(FW_UPDATE_PORT_MARK)) {
            m_statusLabel->setText("Find Upgrade Device!");
            return port.systemLocation();
        }
    }
    m_statusLabel->setText("Find Upgrade Device Error!");
    return {};
}

void MainWindow::startTool(const QString &port)
{
    const QString directory = QCoreApplication::applicationDirPath();
    const QStringList arguments = {"dfu", "usb-serial", "-pkg", directory + "/dfu.zip", "-p", port};

    // A tool that fails to start is not noticed here; the upgrade ends with the time-out.
    m_process = new QProcess;
    m_process->start(directory + "/nrfutil-mac", arguments, QIODevice::ReadWrite);
    connect(m_process, SIGNAL(readyReadStandardOutput()), this, SLOT(onReadyReadStandardOutput()));
    connect(m_process, SIGNAL(readyReadStandardError()), this, SLOT(onReadyReadStandardError()));

    m_timer = new QTimer;
    m_timer->start(30);
    connect(m_timer, SIGNAL(timeout()), this, SLOT(onTimerProcessOutput()));
}

void MainWindow::finishOnSuccess(const QByteArray &output)
{
    if (!textOf(output).contains("Device programmed")) {
        return;
    }
    if (m_timer != nullptr) {
        m_timer->stop();
        delete m_timer;
        m_timer = nullptr;
    }
    m_statusLabel->setText("Upgrade Successfully");
    m_progressBar->setValue(10000);
    m_upgradeButton->setEnabled(true);
}
