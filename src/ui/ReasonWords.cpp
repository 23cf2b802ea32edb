#include "ui/ReasonWords.h"

#include "i18n/LanguageName.h"

#include <algorithm>
#include <array>
#include <utility>

namespace Quorlin {

namespace {

struct Words
{
    Reason reason;
    const char *sentence;
    const char *advice;
};

constexpr std::array German{
    Words{Reason::None, "Kein Grund.", ""},
    Words{Reason::UnknownFormat, "Dateien dieser Art können nicht umgewandelt werden.",
          "Speichern Sie das Dokument in einem Format, das angenommen wird, etwa ODT, DOCX oder "
          "PDF."},
    Words{Reason::NotFound, "Diese Datei gibt es nicht.",
          "Sie wurde verschoben, umbenannt oder gelöscht; wandeln Sie sie dort um, wo sie jetzt "
          "liegt."},
    Words{Reason::NotRegular, "Das ist keine gewöhnliche Datei.",
          "Nur Dateien können umgewandelt werden, keine Geräte und keine Pipes."},
    Words{Reason::NotReadable, "Die Datei darf nicht gelesen werden.",
          "Bitten Sie ihren Besitzer um das Recht, sie zu lesen."},
    Words{Reason::Empty, "Die Datei ist leer.",
          "Es gibt nichts umzuwandeln; suchen Sie eine andere Kopie."},
    Words{Reason::LockFile,
          "Diese Datei zeigt nur an, dass ein Dokument in einem Programm geöffnet ist.",
          "Wandeln Sie das Dokument selbst um."},
    Words{Reason::NotPostScript, "Die Datei ist keine PostScript-Datei.",
          "Drucken Sie sie noch einmal in eine Datei, oder geben Sie ihr die Endung dessen, was "
          "sie ist."},
    Words{Reason::Protected, "Das Dokument ist durch ein Kennwort geschützt.",
          "Öffnen Sie es in seinem Programm, speichern Sie eine Kopie ohne Kennwort, und wandeln "
          "Sie die Kopie um."},
    Words{Reason::NotPrintable, "Der Besitzer des Dokuments erlaubt das Drucken nicht.",
          "Bitten Sie ihn um eine Kopie, die gedruckt werden darf."},
    Words{Reason::Damaged, "Das Dokument ist beschädigt oder nicht das, was sein Name sagt.",
          "Öffnen Sie es in seinem Programm; wenn das gelingt, speichern Sie es unter neuem Namen, "
          "und wandeln Sie dieses um."},
    Words{Reason::TookTooLong, "Es hat zu lange gedauert.",
          "Wandeln Sie das Dokument allein oder in kleineren Teilen um."},
    Words{Reason::OutOfMemory, "Es wurde zu viel Arbeitsspeicher gebraucht.",
          "Wandeln Sie das Dokument in kleineren Teilen oder mit kleineren Bildern um."},
    Words{Reason::EngineFailed, "Das Umwandlungsprogramm ist an diesem Dokument gescheitert.",
          "Versuchen Sie es noch einmal; wenn es wieder misslingt, speichern Sie das Dokument in "
          "einem anderen Format, und wandeln Sie dieses um."},
    Words{Reason::ProgramMissing, "Ein Programm, das gebraucht wird, ist nicht installiert.",
          "Installieren Sie es, oder wenden Sie sich an die Person, die diesen Computer betreut."},
    Words{Reason::NoRoom, "Auf dem Datenträger ist kein Platz mehr.",
          "Schaffen Sie Platz, und wandeln Sie noch einmal um."},
    Words{Reason::NotAllowed, "Das Ergebnis darf nicht geschrieben werden.",
          "Kopieren Sie das Dokument in einen Ordner, in den Sie schreiben dürfen, und wandeln Sie "
          "es dort um."},
    Words{Reason::BadOptions,
          "Die Datei mit den Einstellungen der Qualität fehlt oder ist fehlerhaft.",
          "Wählen Sie eine andere Qualität, und melden Sie es der Person, die diesen Computer "
          "betreut."},
    Words{Reason::NothingPrinted, "Das Dokument hat keine Seiten.",
          "Öffnen Sie es in seinem Programm, und sehen Sie nach, ob alles darin ausgeblendet oder "
          "leer ist."},
    Words{Reason::Cancelled, "Die Umwandlung wurde vor dem Ende abgebrochen.",
          "Wandeln Sie das Dokument noch einmal um."},
};

constexpr std::array French{
    Words{Reason::None, "Aucune raison.", ""},
    Words{Reason::UnknownFormat, "Les fichiers de ce type ne peuvent pas être convertis.",
          "Enregistrez le document dans un format accepté, par exemple ODT, DOCX ou PDF."},
    Words{Reason::NotFound, "Ce fichier n’existe pas.",
          "Il a été déplacé, renommé ou supprimé ; convertissez-le là où il se trouve maintenant."},
    Words{Reason::NotRegular, "Ce n’est pas un fichier ordinaire.",
          "Seuls les fichiers peuvent être convertis, pas les périphériques ni les tubes."},
    Words{Reason::NotReadable, "Le fichier ne peut pas être lu.",
          "Demandez à son propriétaire le droit de le lire."},
    Words{Reason::Empty, "Le fichier est vide.",
          "Il n’y a rien à convertir ; cherchez une autre copie."},
    Words{Reason::LockFile,
          "Ce fichier indique seulement qu’un document est ouvert dans un programme.",
          "Convertissez le document lui-même."},
    Words{Reason::NotPostScript, "Le fichier n’est pas un fichier PostScript.",
          "Imprimez-le de nouveau dans un fichier, ou donnez-lui l’extension de ce qu’il est."},
    Words{Reason::Protected, "Le document est protégé par un mot de passe.",
          "Ouvrez-le dans son programme, enregistrez une copie sans mot de passe et convertissez "
          "la copie."},
    Words{Reason::NotPrintable, "Le propriétaire du document n’en permet pas l’impression.",
          "Demandez-lui une copie qui peut être imprimée."},
    Words{Reason::Damaged, "Le document est endommagé ou n’est pas ce que dit son nom.",
          "Ouvrez-le dans son programme ; si cela réussit, enregistrez-le sous un autre nom et "
          "convertissez ce fichier."},
    Words{Reason::TookTooLong, "La conversion a pris trop de temps.",
          "Convertissez le document seul ou en parties plus petites."},
    Words{Reason::OutOfMemory, "La conversion a demandé trop de mémoire.",
          "Convertissez le document en parties plus petites ou avec des images plus petites."},
    Words{Reason::EngineFailed, "Le convertisseur a échoué sur ce document.",
          "Essayez encore ; en cas de nouvel échec, enregistrez le document dans un autre format "
          "et convertissez ce fichier."},
    Words{Reason::ProgramMissing, "Un programme nécessaire n’est pas installé.",
          "Installez-le ou adressez-vous à la personne qui s’occupe de cet ordinateur."},
    Words{Reason::NoRoom, "Il n’y a plus de place sur le disque.",
          "Faites de la place et convertissez de nouveau."},
    Words{Reason::NotAllowed, "Le résultat ne peut pas être écrit.",
          "Copiez le document dans un dossier où vous pouvez écrire et convertissez-le à cet "
          "endroit."},
    Words{Reason::BadOptions, "Le fichier des réglages de qualité est absent ou incorrect.",
          "Choisissez une autre qualité et signalez-le à la personne qui s’occupe de cet "
          "ordinateur."},
    Words{Reason::NothingPrinted, "Le document n’a pas de pages.",
          "Ouvrez-le dans son programme et vérifiez si tout y est masqué ou vide."},
    Words{Reason::Cancelled, "La conversion a été arrêtée avant la fin.",
          "Convertissez le document de nouveau."},
};

/// @return nullptr where there are none, and English takes their place.
const Words *wordsFor(Reason reason, const QString &language)
{
    const auto in = [reason](const auto &table) {
        const auto found = std::ranges::find(table, reason, &Words::reason);
        return found == table.end() ? nullptr : &*found;
    };
    if (language == LanguageName::German)
        return in(German);
    return language == LanguageName::French ? in(French) : nullptr;
}

} // namespace

ReasonWords::ReasonWords(std::function<QString()> language) : m_language(std::move(language)) {}

QString ReasonWords::sentence(Reason reason) const
{
    const auto *const words = wordsFor(reason, m_language());
    return words ? QString::fromUtf8(words->sentence) : ReasonTexts::sentence(reason);
}

QString ReasonWords::advice(Reason reason) const
{
    const auto *const words = wordsFor(reason, m_language());
    return words ? QString::fromUtf8(words->advice) : ReasonTexts::advice(reason);
}

QString ReasonWords::introduce(const QString &detail) const
{
    const auto language = m_language();
    if (language == LanguageName::German)
        return QStringLiteral("Einzelheit (englisch): ") + detail;
    if (language == LanguageName::French)
        return QStringLiteral("Détail (en anglais)\u00a0: ") + detail;
    return ReasonTexts::introduce(detail);
}

QString ReasonWords::more(qsizetype count) const
{
    const auto language = m_language();
    if (language == LanguageName::German)
        return QStringLiteral("… und %1 weitere").arg(count);
    if (language == LanguageName::French)
        return count == 1 ? QStringLiteral("… et un autre")
                          : QStringLiteral("… et %1 autres").arg(count);
    return ReasonTexts::more(count);
}

} // namespace Quorlin
