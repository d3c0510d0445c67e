#include "platform/Translation.h"

#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>
#include <memory>

#include "platform/Text.h"

namespace pendra {

namespace {

constexpr const char* kContext = "pendra";

/// Finds a text by its English alone, whichever class asks.
class ByEnglish final : public QTranslator {
 public:
  using QTranslator::QTranslator;

  [[nodiscard]] QString translate(const char* /*context*/, const char* english, const char* meaning,
                                  int count) const override {
    return QTranslator::translate(kContext, english, meaning, count);
  }
};

template <class Translator>
void install(QCoreApplication& application, const QString& name, const QString& folder) {
  auto translator = std::make_unique<Translator>();
  if (!translator->load(QLocale(), name, QStringLiteral("_"), folder)) return;
  translator->setParent(&application);
  QCoreApplication::installTranslator(translator.release());
}

}  // namespace

QString tr(const char* english, const char* meaning) {
  return QCoreApplication::translate(kContext, english, meaning);
}

QString counted(qint64 count, const char* one, const char* many, std::initializer_list<QStringView> values) {
  constexpr qint64 kMost = std::numeric_limits<int>::max();
  const char* const english = count == 1 ? one : many;
  return formatted(
      QCoreApplication::translate(kContext, english, nullptr, static_cast<int>(std::min(count, kMost))),
      values);
}

void installTranslations(QCoreApplication& application, const QString& folder) {
  install<QTranslator>(application, QStringLiteral("qtbase"),
                       QLibraryInfo::path(QLibraryInfo::TranslationsPath));
  install<ByEnglish>(application, QStringLiteral("pendra"), folder);
}

}  // namespace pendra
