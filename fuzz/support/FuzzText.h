#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QString>

/*!
 * The text that bytes of an input stand for. They are UTF-8, which cannot hold the halves of a surrogate
 * pair: the bytes 1 and 2 stand for a high and a low one.
 */
QString textOf(QByteArrayView bytes);

//! One line of an input: a letter that says what to do, and what to do it with.
struct FuzzStep {
    char what;
    QByteArrayView argument;

    QString text() const { return textOf(argument); }
    //! The number that the argument starts with, 0 for none, from \a least to \a most.
    int number(int least, int most) const;
};

//! The lines of an input, empty ones left out. They refer to \a input.
QList<FuzzStep> stepsOf(QByteArrayView input);
