#include "apps/qzhost/words/Words.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

// The library's own macro wants to stand outside of every namespace.
static void TakeInWords() { Q_INIT_RESOURCE(words); }

namespace app {
namespace {

QString& Chosen() {
    static QString language = "en";
    return language;
}

QTranslator& Catalogue() {
    static QTranslator* const catalogue = new QTranslator();
    return *catalogue;
}

QTranslator& LibraryCatalogue() {
    static QTranslator* const catalogue = new QTranslator();
    return *catalogue;
}

}  // namespace

QString Tr(const char* english) { return QCoreApplication::translate("qzhost", english); }

QString Language() { return Chosen(); }

void UseLanguage(const QString& language) {
    TakeInWords();
    QCoreApplication::removeTranslator(&Catalogue());
    QCoreApplication::removeTranslator(&LibraryCatalogue());
    Chosen() = !language.isEmpty()                                         ? language
               : QLocale::system().uiLanguages().value(0).startsWith("zh") ? "zh"
                                                                           : "en";
    if (Chosen() != "zh") return;
    if (Catalogue().load(":/words/qzhost_zh.qm")) QCoreApplication::installTranslator(&Catalogue());
    // The buttons of the library's own boxes.
    if (LibraryCatalogue().load("qtbase_zh_CN", QLibraryInfo::path(QLibraryInfo::TranslationsPath)))
        QCoreApplication::installTranslator(&LibraryCatalogue());
}

}  // namespace app
