#include "MenuKit/CloseWindowAction.h"

#include "MenuKit/WindowReader.h"

#include <QWidget>

void CloseWindowAction::run() const {
    if (QWidget* const window = WindowReader::frontWindow()) {
        window->close();
    }
}
