#pragma once

#include <QString>

// The web pages the Help menu opens and the update folder, in one place.
namespace WebAddresses {

inline const QString kHomePage = QStringLiteral("https://quillet.example.org/");
inline const QString kBlog = QStringLiteral("https://quillet.example.org/blog/");
inline const QString kFacebook = QStringLiteral("https://www.facebook.com/quillet.archiver");
inline const QString kTwitter = QStringLiteral("https://twitter.com/quillet_app");

// The folder that holds currentversion.txt, updatechanges.txt and
// Quillet.zip; QUILLET_UPDATE_URL names another.
inline const QString kUpdateFolder = QStringLiteral("https://quillet.example.org/update/");
inline QString updateFolder() {
  const QString chosen = qEnvironmentVariable("QUILLET_UPDATE_URL");
  return chosen.isEmpty() ? kUpdateFolder : chosen;
}

}  // namespace WebAddresses
