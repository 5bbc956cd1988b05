// Breaks the rule of the windowless sources on purpose: compiling this must fail.
#include <QWidget>
