#pragma once

#include <QUrl>
#include <QWebEngineUrlRequestInterceptor>

namespace pendra {

/// Lets a page have its own file and one peer, and refuses every other request of the engine, whatever asks
/// for it: no further file, no other address, no redirection away from these.
class OnePeer final : public QWebEngineUrlRequestInterceptor {
 public:
  void allow(const QUrl& page, const QUrl& peer);
  [[nodiscard]] bool isPage(const QUrl& address) const;

  void interceptRequest(QWebEngineUrlRequestInfo& info) override;

 private:
  QUrl page_;
  QUrl peer_;
};

}  // namespace pendra
