// SPDX-License-Identifier: MIT

#pragma once

#include <QSplitter>

// A splitter of two columns whose handle takes the focus, so that those without a mouse can move
// it: with the arrow keys, or as a value by assistive technology.
class ColumnSplitter : public QSplitter
{
    Q_OBJECT

public:
    // @p handleName tells assistive technology what the handle is.
    explicit ColumnSplitter(const QString &handleName);

Q_SIGNALS:
    // The handle was moved, by whatever means. The width is that of the first column, in pixels.
    void widthChanged(int width);

protected:
    QSplitterHandle *createHandle() override;

private:
    QString m_handleName;
};
