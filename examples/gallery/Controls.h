// SPDX-FileCopyrightText: 2026 The FW Update developers
// SPDX-License-Identifier: MIT

#pragma once

#include <QFrame>

class QCheckBox;
class QLabel;
class QLineEdit;
class QSlider;
class QVBoxLayout;

/// The controls for all live specimens. They also show the last signal that a specimen emitted.
class Controls : public QFrame
{
    Q_OBJECT

public:
    explicit Controls(QWidget *parent);

    bool isSubjectEnabled() const;
    bool isSubjectChecked() const;
    QString caption() const;
    int value() const;

    /// Follows a specimen that the user has checked.
    void setSubjectChecked(bool checked);

    /// Shows that a specimen of the class \a className has emitted \a signal.
    void report(const QString &className, const QString &signal);

signals:
    void enabledChanged(bool enabled);
    void checkedChanged(bool checked);
    void captionChanged(const QString &caption);
    void valueChanged(int value);

private:
    void addHeading(QVBoxLayout *layout, const QString &text);

    QCheckBox *m_enabled;
    QCheckBox *m_checked;
    QLineEdit *m_caption;
    QSlider *m_value;
    QLabel *m_report;
};
