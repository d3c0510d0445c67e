#include "Said.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <cstdio>

#include "CommandLine.h"
#include "PlainText.h"

namespace pendra {

namespace {

bool print(const QByteArray& bytes, std::FILE* to) {
  return std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), to) ==
             static_cast<std::size_t>(bytes.size()) &&
         std::fflush(to) == 0;
}

}  // namespace

Said said(const Error& error, bool asJson) {
  const int status = statusOf(refusalOf(error));
  if (asJson) return {.status = status, .printed = printedAsJson(error)};
  return {.status = status, .refused = "pendra: " + error.text.simplified().toUtf8() + '\n'};
}

Said said(const Order& order, const Result<QVariant>& answer) {
  if (!answer) return said(answer.error(), order.asJson);
  return {.status = status::kDone, .printed = printed(order, answer.value())};
}

int show(const Said& said) {
  if (print(said.printed, stdout) && print(said.refused, stderr)) return said.status;
  std::perror("pendra: stdout");
  return status::kFailed;
}

QByteArray printed(const Order& order, const QVariant& answer) {
  if (!order.asJson) return plainText(order.verb, answer).toUtf8();
  return QJsonDocument::fromVariant(answer).toJson(QJsonDocument::Compact) + '\n';
}

QByteArray printedAsJson(const Error& error) {
  const QJsonObject object{{QStringLiteral("error"), nameOf(refusalOf(error))},
                           {QStringLiteral("message"), error.text}};
  return QJsonDocument(object).toJson(QJsonDocument::Compact) + '\n';
}

}  // namespace pendra
