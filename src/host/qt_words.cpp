#include "host/qt_words.h"

#include <QCoreApplication>
#include <QLibraryInfo>

namespace vrk {

QtWords::QtWords(bool english)
{
    if (!english && translator_.load("qtbase_zh_CN", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&translator_);
}

} // namespace vrk
