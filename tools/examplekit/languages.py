"""One sentence in several languages and scripts: the garden is open to everyone."""

# Name in English, code, direction, sentence.
SENTENCES = [
    ("English", "en-GB", "ltr", "The garden is open to everyone."),
    ("French", "fr-FR", "ltr", "Le jardin est ouvert à tous, même l’été."),
    ("German", "de-DE", "ltr", "Der Garten steht allen offen – auch für Gäste."),
    ("Spanish", "es-ES", "ltr", "El jardín está abierto a todos, también mañana."),
    ("Polish", "pl-PL", "ltr", "Ogród jest otwarty dla wszystkich, również późną jesienią."),
    ("Czech", "cs-CZ", "ltr", "Zahrada je otevřená všem, příště i večer."),
    ("Turkish", "tr-TR", "ltr", "Bahçe herkese açıktır, çocuklara da."),
    ("Vietnamese", "vi-VN", "ltr", "Khu vườn mở cửa cho tất cả mọi người."),
    ("Greek", "el-GR", "ltr", "Ο κήπος είναι ανοιχτός σε όλους."),
    ("Russian", "ru-RU", "ltr", "Сад открыт для всех."),
    ("Ukrainian", "uk-UA", "ltr", "Сад відкритий для всіх, їжаків теж."),
    ("Hebrew", "he-IL", "rtl", "הגן פתוח לכולם."),
    ("Arabic", "ar-SA", "rtl", "الحديقة مفتوحة للجميع."),
]
