#pragma once

#include <QtWidgets/QGroupBox>

#include <functional>

class QGridLayout;

//! One class of the library in all its states, side by side, each with a caption.
class Page : public QGroupBox {
    Q_OBJECT

public:
    //! \a columns is the number of specimens in a row.
    Page(const QString& className, int columns);

    QString className() const;

    /*!
     * Adds a specimen, which the page owns from then on. \a bring puts it into its state once it is
     * visible; states that the mouse or the focus brought about would be lost by showing it.
     */
    void add(const QString& caption, QWidget* specimen, std::function<void()> bring = {});

    //! Brings all specimens into their states. The page has to be visible and its window active.
    void bringStates();

private:
    QString m_className;
    int m_columns = 1;
    int m_count = 0;
    QGridLayout* m_grid = nullptr;
    QList<std::function<void()>> m_states;
};

// The ways into a state that a mouse and a keyboard have.
void hover(QWidget* widget);
void pressMouse(QWidget* widget);
void focus(QWidget* widget);
