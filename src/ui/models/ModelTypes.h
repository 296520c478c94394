#pragma once

#include "app/pages/AboutModel.h"
#include "app/pages/WindowModel.h"

#include <QtQml/qqml.h>

// The models of the pages as QML knows them. They are made in C++ and handed to the pages that show them.

namespace brindle {

struct AboutModelType {
    Q_GADGET
    QML_FOREIGN(brindle::AboutModel)
    QML_NAMED_ELEMENT(AboutModel)
    QML_UNCREATABLE("made with the program")
};

struct WindowModelType {
    Q_GADGET
    QML_FOREIGN(brindle::WindowModel)
    QML_NAMED_ELEMENT(WindowModel)
    QML_UNCREATABLE("made with the program")
};

}  // namespace brindle
