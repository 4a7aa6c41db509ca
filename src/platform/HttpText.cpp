#include "platform/HttpText.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QTimer>

#include <memory>

namespace HttpText {

std::optional<QString> fetch(const QUrl& url, QDeadlineTimer deadline) {
  if (deadline.hasExpired())
    return std::nullopt;
  QNetworkAccessManager network;
  QNetworkRequest request(url);
  request.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
  const std::unique_ptr<QNetworkReply> reply(network.get(request));
  QEventLoop loop;
  QTimer timeout;
  timeout.setSingleShot(true);
  QObject::connect(reply.get(), &QNetworkReply::finished, &loop, &QEventLoop::quit);
  QObject::connect(&timeout, &QTimer::timeout, reply.get(), &QNetworkReply::abort);
  if (!deadline.isForever())
    timeout.start(std::chrono::milliseconds(deadline.remainingTime()));
  if (!reply->isFinished())
    loop.exec(QEventLoop::ExcludeUserInputEvents);
  if (reply->error() != QNetworkReply::NoError)
    return std::nullopt;
  return QString::fromUtf8(reply->readAll());
}

}  // namespace HttpText
