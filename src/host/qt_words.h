// Qt's own words - buttons of boxes, file dialogs, context menus - in the language of the program.
#pragma once

#include <QTranslator>

namespace vrk {

// In force for as long as it lives. English needs nothing: it is what Qt speaks by itself. Without the translations on
// the machine Qt goes on in English.
class QtWords {
public:
    explicit QtWords(bool english);

private:
    QTranslator translator_; // takes itself out when it goes
};

} // namespace vrk
