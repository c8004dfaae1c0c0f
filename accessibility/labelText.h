#pragma once

#include <QtCore/QList>
#include <QtCore/QString>

class QLabel;

struct Link {
    QString text;
    QString target;
};

//! \a text of \a label as a person reads it: without markup, and without the ampersands of mnemonics.
QString readableText(const QLabel* label, const QString& text);
//! The text that \a label shows; empty for null.
QString readableText(const QLabel* label);
//! The links in the text of \a label, in reading order.
QList<Link> linksOf(const QLabel* label);
