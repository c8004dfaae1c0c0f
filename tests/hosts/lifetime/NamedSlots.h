#pragma once

#include <QtCore/QDateTime>
#include <QtCore/QMetaMethod>
#include <QtCore/QObject>
#include <QtGui/QKeySequence>
#include <QtGui/QValidator>

#include <functional>

class QAbstractButton;
class QFocusEvent;
class QListWidgetItem;
class QTableWidgetItem;
class QTreeWidgetItem;

//! What a service gives to connectSlotsByName(): slots for the widgets of all the forms that are shown.
class NamedSlots : public QObject {
    Q_OBJECT

public:
    using Listener = std::function<void(const QMetaMethod& signal, QObject* emitter)>;
    explicit NamedSlots(Listener listener)
        : m_listener(std::move(listener))
    {
    }

public Q_SLOTS:
    // The form "qtwidgets"
    void on_rows_destroyed() { heard(); }
    void on_tick_toggled(bool) { heard(); }
    void on_tick_stateChanged(int) { heard(); }
    void on_tick_pressed() { heard(); }
    void on_tick_released() { heard(); }
    void on_tick_clicked(bool) { heard(); }
    void on_first_toggled(bool) { heard(); }
    void on_second_toggled(bool) { heard(); }
    void on_second_clicked() { heard(); }
    void on_push_toggled(bool) { heard(); }
    void on_push_pressed() { heard(); }
    void on_push_released() { heard(); }
    void on_push_clicked() { heard(); }
    void on_main_pressed() { heard(); }
    void on_main_destroyed() { heard(); }
    void on_tool_toggled(bool) { heard(); }
    void on_tool_pressed() { heard(); }
    void on_tool_released() { heard(); }
    void on_command_pressed() { heard(); }
    void on_command_clicked(bool) { heard(); }
    void on_line_textChanged(QString) { heard(); }
    void on_line_textEdited(QString) { heard(); }
    void on_line_editingFinished() { heard(); }
    void on_line_returnPressed() { heard(); }
    void on_line_selectionChanged() { heard(); }
    void on_line_cursorPositionChanged(int, int) { heard(); }
    void on_line_destroyed(QObject*) { heard(); }
    void on_secret_textEdited(QString) { heard(); }
    void on_secret_editingFinished() { heard(); }
    void on_spin_valueChanged(int) { heard(); }
    void on_spin_textChanged(QString) { heard(); }
    void on_spin_editingFinished() { heard(); }
    void on_doubleSpin_valueChanged(double) { heard(); }
    void on_doubleSpin_editingFinished() { heard(); }
    void on_date_dateTimeChanged(QDateTime) { heard(); }
    void on_date_dateChanged(QDate) { heard(); }
    void on_choice_currentIndexChanged(int) { heard(); }
    void on_choice_currentTextChanged(QString) { heard(); }
    void on_choice_activated(int) { heard(); }
    void on_choice_highlighted(int) { heard(); }
    void on_typed_editTextChanged(QString) { heard(); }
    void on_typed_currentIndexChanged(int) { heard(); }
    void on_group_toggled(bool) { heard(); }
    void on_group_clicked(bool) { heard(); }
    void on_slider_valueChanged(int) { heard(); }
    void on_slider_sliderPressed() { heard(); }
    void on_slider_sliderMoved(int) { heard(); }
    void on_slider_sliderReleased() { heard(); }
    void on_slider_actionTriggered(int) { heard(); }
    void on_dial_valueChanged(int) { heard(); }
    void on_dial_sliderPressed() { heard(); }
    void on_bar_valueChanged(int) { heard(); }
    void on_bar_actionTriggered(int) { heard(); }
    void on_plain_textChanged() { heard(); }
    void on_plain_selectionChanged() { heard(); }
    void on_plain_cursorPositionChanged() { heard(); }
    void on_plain_undoAvailable(bool) { heard(); }
    void on_list_currentRowChanged(int) { heard(); }
    void on_list_itemSelectionChanged() { heard(); }
    void on_list_itemPressed(QListWidgetItem*) { heard(); }
    void on_list_itemClicked(QListWidgetItem*) { heard(); }
    void on_list_itemActivated(QListWidgetItem*) { heard(); }
    void on_tree_currentItemChanged(QTreeWidgetItem*, QTreeWidgetItem*) { heard(); }
    void on_tree_itemExpanded(QTreeWidgetItem*) { heard(); }
    void on_tree_itemCollapsed(QTreeWidgetItem*) { heard(); }
    void on_tree_itemPressed(QTreeWidgetItem*, int) { heard(); }
    void on_tabs_currentChanged(int) { heard(); }
    void on_tabs_tabBarClicked(int) { heard(); }
    void on_table_currentCellChanged(int, int, int, int) { heard(); }
    void on_table_cellPressed(int, int) { heard(); }
    void on_table_cellClicked(int, int) { heard(); }
    void on_table_itemSelectionChanged() { heard(); }
    void on_calendar_selectionChanged() { heard(); }
    void on_calendar_clicked(QDate) { heard(); }
    void on_calendar_activated(QDate) { heard(); }
    void on_calendar_currentPageChanged(int, int) { heard(); }
    void on_toolBox_currentChanged(int) { heard(); }
    void on_keys_keySequenceChanged(QKeySequence) { heard(); }
    void on_keys_editingFinished() { heard(); }
    void on_link_linkActivated(QString) { heard(); }
    void on_stack_currentChanged(int) { heard(); }
    void on_buttons_accepted() { heard(); }
    void on_buttons_rejected() { heard(); }
    void on_buttons_clicked(QAbstractButton*) { heard(); }

    // The form "dialogroot"
    void on_entry_textEdited(QString) { heard(); }
    void on_entry_editingFinished() { heard(); }
    void on_send_pressed() { heard(); }
    void on_answers_accepted() { heard(); }
    void on_dialogRoot_accepted() { heard(); }
    void on_dialogRoot_rejected() { heard(); }
    void on_dialogRoot_finished(int) { heard(); }

    // The form "names"; it has two edits of the same name
    void on_okButton_pressed() { heard(); }
    void on_okButton_destroyed() { heard(); }
    void on_agree_toggled(bool) { heard(); }
    void on_agree_stateChanged(int) { heard(); }
    void on_nameEdit_textChanged(QString) { heard(); }
    void on_nameEdit_editingFinished() { heard(); }
    void on_nameEdit_returnPressed() { heard(); }
    void on_count_valueChanged(int) { heard(); }

    // The form "allwidgets"
    void on_myCommandLinkButton_pressed() { heard(); }
    void on_myCommandLinkButton_clicked(bool) { heard(); }
    void on_myToggleButton_on() { heard(); }
    void on_myToggleButton_off() { heard(); }
    void on_myHyperlinkLabel_linkActivated(QString) { heard(); }
    void on_myHyperlinkLabel_internetNotConnected(QString) { heard(); }
    void on_myFlatButton_mouseClicked() { heard(); }
    void on_myFlatButton_enterKeyClicked() { heard(); }
    void on_myLightStdSSButton_pressed() { heard(); }
    void on_myLightStdSSButton_released() { heard(); }
    void on_myLightStdSSCheckbox_toggled(bool) { heard(); }
    void on_myLightStdSSCheckbox_stateChanged(int) { heard(); }
    void on_myLightStdButton_pressed() { heard(); }
    void on_myLightStdButton_clicked() { heard(); }

    // The form "formatinput"
    void on_productKey_textChanged(QValidator::State) { heard(); }
    void on_productKey_validityChanged(QValidator::State) { heard(); }
    void on_pin_textChanged(int, QString&) { heard(); }
    void on_pin_textEdited(QString) { heard(); }
    void on_pin_editingFinished() { heard(); }
    void on_pin_selectionChanged() { heard(); }
    void on_pin_cursorPositionChanged(int, int) { heard(); }
    void on_pin_focusOut(int, QFocusEvent*) { heard(); }
    void on_pin_copyMe() { heard(); }

private:
    void heard()
    {
        if (QObject* emitter = sender())
            m_listener(emitter->metaObject()->method(senderSignalIndex()), emitter);
    }

    const Listener m_listener;
};
