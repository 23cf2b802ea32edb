#include "i18n/LocaleTable.h"

#include <QByteArray>

#include <algorithm>
#include <array>

namespace Quorlin::LocaleTable {

namespace {

constexpr quint32 EnglishUnitedStates = 1033;
constexpr quint32 LanguageMask = 0x3FF;

// clang-format off
constexpr std::array Rows{
    LocaleRow{"en_US", 0x0409, 1252}, LocaleRow{"en_GB", 0x0809, 1252},
    LocaleRow{"en_AU", 0x0C09, 1252}, LocaleRow{"en_CA", 0x1009, 1252},
    LocaleRow{"en_NZ", 0x1409, 1252}, LocaleRow{"en_IE", 0x1809, 1252},
    LocaleRow{"en_ZA", 0x1C09, 1252}, LocaleRow{"en_JM", 0x2009, 1252},
    LocaleRow{"en_029", 0x2409, 1252}, LocaleRow{"en_BZ", 0x2809, 1252},
    LocaleRow{"en_TT", 0x2C09, 1252}, LocaleRow{"en_ZW", 0x3009, 1252},
    LocaleRow{"en_PH", 0x3409, 1252},
    LocaleRow{"de_DE", 0x0407, 1252}, LocaleRow{"de_CH", 0x0807, 1252},
    LocaleRow{"de_AT", 0x0C07, 1252}, LocaleRow{"de_LU", 0x1007, 1252},
    LocaleRow{"de_LI", 0x1407, 1252},
    LocaleRow{"fr_FR", 0x040C, 1252}, LocaleRow{"fr_BE", 0x080C, 1252},
    LocaleRow{"fr_CA", 0x0C0C, 1252}, LocaleRow{"fr_CH", 0x100C, 1252},
    LocaleRow{"fr_LU", 0x140C, 1252}, LocaleRow{"fr_MC", 0x180C, 1252},
    LocaleRow{"es_ES", 0x0C0A, 1252}, LocaleRow{"es_MX", 0x080A, 1252},
    LocaleRow{"es_GT", 0x100A, 1252}, LocaleRow{"es_CR", 0x140A, 1252},
    LocaleRow{"es_PA", 0x180A, 1252}, LocaleRow{"es_DO", 0x1C0A, 1252},
    LocaleRow{"es_VE", 0x200A, 1252}, LocaleRow{"es_CO", 0x240A, 1252},
    LocaleRow{"es_PE", 0x280A, 1252}, LocaleRow{"es_AR", 0x2C0A, 1252},
    LocaleRow{"es_EC", 0x300A, 1252}, LocaleRow{"es_CL", 0x340A, 1252},
    LocaleRow{"es_UY", 0x380A, 1252}, LocaleRow{"es_PY", 0x3C0A, 1252},
    LocaleRow{"es_BO", 0x400A, 1252}, LocaleRow{"es_SV", 0x440A, 1252},
    LocaleRow{"es_HN", 0x480A, 1252}, LocaleRow{"es_NI", 0x4C0A, 1252},
    LocaleRow{"es_PR", 0x500A, 1252},
    LocaleRow{"it_IT", 0x0410, 1252}, LocaleRow{"it_CH", 0x0810, 1252},
    LocaleRow{"pt_PT", 0x0816, 1252}, LocaleRow{"pt_BR", 0x0416, 1252},
    LocaleRow{"nl_NL", 0x0413, 1252}, LocaleRow{"nl_BE", 0x0813, 1252},
    LocaleRow{"sv_SE", 0x041D, 1252}, LocaleRow{"sv_FI", 0x081D, 1252},
    LocaleRow{"da_DK", 0x0406, 1252}, LocaleRow{"fi_FI", 0x040B, 1252},
    LocaleRow{"nb_NO", 0x0414, 1252}, LocaleRow{"no_NO", 0x0414, 1252},
    LocaleRow{"nn_NO", 0x0814, 1252},
    LocaleRow{"is_IS", 0x040F, 1252}, LocaleRow{"fo_FO", 0x0438, 1252},
    LocaleRow{"ca_ES", 0x0403, 1252}, LocaleRow{"eu_ES", 0x042D, 1252},
    LocaleRow{"gl_ES", 0x0456, 1252}, LocaleRow{"br_FR", 0x047E, 1252},
    LocaleRow{"oc_FR", 0x0482, 1252}, LocaleRow{"cy_GB", 0x0452, 1252},
    LocaleRow{"ga_IE", 0x083C, 1252}, LocaleRow{"lb_LU", 0x046E, 1252},
    LocaleRow{"fy_NL", 0x0462, 1252}, LocaleRow{"af_ZA", 0x0436, 1252},
    LocaleRow{"id_ID", 0x0421, 1252}, LocaleRow{"ms_MY", 0x043E, 1252},
    LocaleRow{"sw_KE", 0x0441, 1252},
    LocaleRow{"pl_PL", 0x0415, 1250}, LocaleRow{"cs_CZ", 0x0405, 1250},
    LocaleRow{"hu_HU", 0x040E, 1250}, LocaleRow{"sk_SK", 0x041B, 1250},
    LocaleRow{"sl_SI", 0x0424, 1250}, LocaleRow{"hr_HR", 0x041A, 1250},
    LocaleRow{"hr_BA", 0x101A, 1250}, LocaleRow{"bs_BA", 0x141A, 1250},
    LocaleRow{"ro_RO", 0x0418, 1250}, LocaleRow{"sq_AL", 0x041C, 1250},
    LocaleRow{"sr_RS", 0x281A, 1251}, LocaleRow{"sr_RS@latin", 0x241A, 1250},
    LocaleRow{"sr_ME", 0x301A, 1251}, LocaleRow{"sr_ME@latin", 0x2C1A, 1250},
    LocaleRow{"sr_BA", 0x1C1A, 1251}, LocaleRow{"sr_CS", 0x0C1A, 1251},
    LocaleRow{"ru_RU", 0x0419, 1251}, LocaleRow{"uk_UA", 0x0422, 1251},
    LocaleRow{"bg_BG", 0x0402, 1251}, LocaleRow{"be_BY", 0x0423, 1251},
    LocaleRow{"mk_MK", 0x042F, 1251}, LocaleRow{"kk_KZ", 0x043F, 1251},
    LocaleRow{"ky_KG", 0x0440, 1251}, LocaleRow{"mn_MN", 0x0450, 1251},
    LocaleRow{"tt_RU", 0x0444, 1251},
    LocaleRow{"el_GR", 0x0408, 1253},
    LocaleRow{"tr_TR", 0x041F, 1254}, LocaleRow{"az_AZ", 0x042C, 1254},
    LocaleRow{"uz_UZ", 0x0443, 1254}, LocaleRow{"uz_UZ@cyrillic", 0x0843, 1251},
    LocaleRow{"he_IL", 0x040D, 1255}, LocaleRow{"iw_IL", 0x040D, 1255},
    LocaleRow{"ar_SA", 0x0401, 1256}, LocaleRow{"ar_IQ", 0x0801, 1256},
    LocaleRow{"ar_EG", 0x0C01, 1256}, LocaleRow{"ar_LY", 0x1001, 1256},
    LocaleRow{"ar_DZ", 0x1401, 1256}, LocaleRow{"ar_MA", 0x1801, 1256},
    LocaleRow{"ar_TN", 0x1C01, 1256}, LocaleRow{"ar_OM", 0x2001, 1256},
    LocaleRow{"ar_YE", 0x2401, 1256}, LocaleRow{"ar_SY", 0x2801, 1256},
    LocaleRow{"ar_JO", 0x2C01, 1256}, LocaleRow{"ar_LB", 0x3001, 1256},
    LocaleRow{"ar_KW", 0x3401, 1256}, LocaleRow{"ar_AE", 0x3801, 1256},
    LocaleRow{"ar_BH", 0x3C01, 1256}, LocaleRow{"ar_QA", 0x4001, 1256},
    LocaleRow{"fa_IR", 0x0429, 1256}, LocaleRow{"ur_PK", 0x0420, 1256},
    LocaleRow{"et_EE", 0x0425, 1257}, LocaleRow{"lv_LV", 0x0426, 1257},
    LocaleRow{"lt_LT", 0x0427, 1257},
    LocaleRow{"vi_VN", 0x042A, 1258}, LocaleRow{"th_TH", 0x041E, 874},
    LocaleRow{"ja_JP", 0x0411, 932}, LocaleRow{"ko_KR", 0x0412, 949},
    LocaleRow{"zh_CN", 0x0804, 936}, LocaleRow{"zh_SG", 0x1004, 936},
    LocaleRow{"zh_TW", 0x0404, 950}, LocaleRow{"zh_HK", 0x0C04, 950},
    LocaleRow{"zh_MO", 0x1404, 950},
    LocaleRow{"hi_IN", 0x0439, 0}, LocaleRow{"bn_IN", 0x0445, 0},
    LocaleRow{"ta_IN", 0x0449, 0}, LocaleRow{"te_IN", 0x044A, 0},
    LocaleRow{"mr_IN", 0x044E, 0}, LocaleRow{"gu_IN", 0x0447, 0},
    LocaleRow{"pa_IN", 0x0446, 0}, LocaleRow{"kn_IN", 0x044B, 0},
    LocaleRow{"ml_IN", 0x044C, 0}, LocaleRow{"ka_GE", 0x0437, 0},
    LocaleRow{"hy_AM", 0x042B, 0},
};
// clang-format on

QByteArrayView upTo(QByteArrayView text, char mark)
{
    const auto end = text.indexOf(mark);
    return end < 0 ? text : text.first(end);
}

/// The name without its character set.
QByteArray plainName(QByteArrayView name)
{
    const auto modifier = name.indexOf('@');
    auto plain = upTo(upTo(name, '@'), '.').toByteArray();
    if (modifier >= 0)
        plain += name.sliced(modifier);
    return plain;
}

const LocaleRow *find(QByteArrayView name)
{
    const auto *const row = std::ranges::find(Rows, name, &LocaleRow::name);
    return row == Rows.end() ? nullptr : row;
}

const LocaleRow *firstOf(QByteArrayView language)
{
    const auto *const row = std::ranges::find_if(Rows, [language](const LocaleRow &candidate) {
        return upTo(candidate.name, '_') == language;
    });
    return row == Rows.end() ? nullptr : row;
}

} // namespace

std::span<const LocaleRow> all()
{
    return Rows;
}

quint32 identifier(QByteArrayView posixName)
{
    const auto name = plainName(posixName);
    const auto country = upTo(name, '@');
    if (country.isEmpty() || country == "C" || country == "POSIX")
        return EnglishUnitedStates;
    for (const auto *const row : {find(name), find(country), firstOf(upTo(country, '_'))}) {
        if (row)
            return row->identifier;
    }
    return 0;
}

std::optional<int> ansiCodePage(quint32 identifier)
{
    const auto *row = std::ranges::find(Rows, identifier, &LocaleRow::identifier);
    if (row == Rows.end())
        row = std::ranges::find_if(Rows, [identifier](const LocaleRow &candidate) {
            return (candidate.identifier & LanguageMask) == (identifier & LanguageMask);
        });
    if (row == Rows.end())
        return {};
    return row->ansiCodePage;
}

} // namespace Quorlin::LocaleTable
