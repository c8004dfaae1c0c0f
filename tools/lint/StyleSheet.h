#pragma once

#include "Suppression.h"

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

//! One widget's part of a selector, such as "QPushButton#ok:hover": states and subcontrols are left out.
struct SimpleSelector {
    //! Empty for any type.
    QString type;
    //! Names of classes that the widget must have exactly, as in ".QPushButton".
    QStringList exactClasses;
    QString objectName;
    //! Whether the widget must be the child of what the selector before asks for, not any descendant.
    bool isChild = false;
};

//! A selector: the last part is the widget, the parts before are widgets above it.
struct Selector {
    QString text;
    QList<SimpleSelector> parts;
    qint64 line = 1;
};

//! The selectors of a style sheet; \a firstLine is the line where \a text begins.
QList<Selector> selectorsOf(const QString& text, qint64 firstLine);

//! A file that styles the widgets named after it.
struct StyleSheet {
    QString path;
    //! The object names that it styles: win_ok.css stands for "ok", and for a widget "win_ok".
    QStringList objectNames;
    QList<Selector> selectors;
    //! A comment speaks of its own lines and the next.
    Suppressions suppressions;
};

//! Without a result, \a error says in one line what is wrong.
std::optional<StyleSheet> readStyleSheet(const QString& path, QString* error);
