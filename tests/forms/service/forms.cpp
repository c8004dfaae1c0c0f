#include <QtCore/QCoreApplication>

const char* const workState = QT_TRANSLATE_NOOP("zefmain", "at work");
