#pragma once

#include <QByteArray>

namespace Quorlin {

/// Documents in the open formats, made from nothing: a zip whose files are not compressed unless
/// asked for.
class PackageMaker
{
public:
    /// Adds a file. @param name path in the package, in ASCII.
    void add(const QByteArray &name, const QByteArray &content);

    /// The same, compressed.
    void addCompressed(const QByteArray &name, const QByteArray &content);

    /// The package with all that was added.
    [[nodiscard]] QByteArray bytes() const;

    /// A text document with one paragraph.
    [[nodiscard]] static QByteArray textDocument(const QByteArray &text);
    /// A small package of a text document with so many paragraphs.
    [[nodiscard]] static QByteArray endlessDocument(int paragraphs);
    /// A text document whose content claims to be encrypted.
    [[nodiscard]] static QByteArray encryptedDocument();
    /// The compound file in which an encrypted document of the other family is wrapped.
    [[nodiscard]] static QByteArray encryptedCompound();

private:
    void append(const QByteArray &name, const QByteArray &description, const QByteArray &data);

    QByteArray m_files;
    QByteArray m_directory;
    int m_count = 0;
};

} // namespace Quorlin
