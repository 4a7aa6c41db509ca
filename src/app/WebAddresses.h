#pragma once

#include <QString>

// The web pages the Help menu opens, in one place.
namespace WebAddresses {

inline const QString kHomePage = QStringLiteral("https://quillet.example.org/");
inline const QString kBlog = QStringLiteral("https://quillet.example.org/blog/");
inline const QString kFacebook = QStringLiteral("https://www.facebook.com/quillet.archiver");
inline const QString kTwitter = QStringLiteral("https://twitter.com/quillet_app");

}  // namespace WebAddresses
