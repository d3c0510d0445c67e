#include "OnePeer.h"

namespace pendra {

void OnePeer::allow(const QUrl& page, const QUrl& peer) {
  page_ = page;
  peer_ = peer;
}

bool OnePeer::isPage(const QUrl& address) const {
  return page_.isLocalFile() && address.isLocalFile() && address.toLocalFile() == page_.toLocalFile();
}

void OnePeer::interceptRequest(QWebEngineUrlRequestInfo& info) {
  const QUrl address = info.requestUrl();
  info.block(!isPage(address) && address != peer_);
}

}  // namespace pendra
