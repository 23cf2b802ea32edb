#pragma once

#include <QString>

/// The web pages that the windows open, each in the language in use. For the thread of the user
/// interface only.
namespace Quorlin::mdlPartner {

/// Makes the three tables of addresses and fills them from the group WebLinks of "Quorlin.ini".
/// An address that is not there, or a file that cannot be read, leaves an empty address.
/// @param programFolder where "Quorlin.ini" lies.
void InitWebLinks(const QString &programFolder);

// The address for a language, by the name of its file or "default"; "" when the table has none.
// No other language stands in for it.
[[nodiscard]] QString GetAdobeLink(const QString &language);
[[nodiscard]] QString GetProductLink(const QString &language);
[[nodiscard]] QString GetMakerLink(const QString &language);

/// Shows a page in the desktop's browser, without waiting for it. An empty address, one that is
/// no full http or https address, and a desktop without a browser do nothing.
void OpenLink(const QString &address);

} // namespace Quorlin::mdlPartner
