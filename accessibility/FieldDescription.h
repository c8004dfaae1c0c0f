#pragma once

class QWidget;

/*!
 * Makes messages of a form known to assistive technology: a field whose dynamic property "describedBy" names
 * a label below \a form is described by the text of that label as long as the label is shown, and by its own
 * accessibleDescription otherwise. Changes are announced for the field, or for what has the focus inside it.
 */
void describeFields(QWidget* form);
