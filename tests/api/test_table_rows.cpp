// Every row of the assigned-number tables, each one driven through the
// codecs of the public header.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>

#include "api_support.h"
#include "tarnwspencdec.h"
#include "wsp_test_support.h"

using namespace wsp_test;
using namespace api_core;

// Rows of the assigned-number tables, as published for clients.
namespace {
struct CodeName {
    uint32_t code;
    const char *name;
};
const CodeName kContentTypes[] = {
    {0x0, "*/*"}, {0x1, "text/*"}, {0x2, "text/html"}, {0x3, "text/plain"}, {0x4, "text/x-hdml"},
    {0x5, "text/x-ttml"}, {0x6, "text/x-vcalendar"}, {0x7, "text/x-vcard"}, {0x8, "text/vnd.wap.wml"},
    {0x9, "text/vnd.wap.wmlscript"}, {0xA, "application/vnd.wap.catc"}, {0xB, "multipart/*"},
    {0xC, "multipart/mixed"}, {0xD, "multipart/form-data"}, {0xE, "multipart/byteranges"},
    {0xF, "multipart/alternative"}, {0x10, "application/*"}, {0x11, "application/java-vm"},
    {0x12, "application/x-www-form-urlencoded"}, {0x13, "application/x-hdmlc"}, {0x14, "application/vnd.wap.wmlc"},
    {0x15, "application/vnd.wap.wmlscriptc"}, {0x16, "application/vnd.wap.wsic"},
    {0x17, "application/vnd.wap.uaprof"}, {0x18, "application/vnd.wap.wtls-ca-certificate"},
    {0x19, "application/vnd.wap.wtls-user-certificate"}, {0x1A, "application/x-x509-ca-cert"},
    {0x1B, "application/x-x509-user-cert"}, {0x1C, "image/*"}, {0x1D, "image/gif"}, {0x1E, "image/jpeg"},
    {0x1F, "image/tiff"}, {0x20, "image/png"}, {0x21, "image/vnd.wap.wbmp"},
    {0x22, "application/vnd.wap.multipart.*"}, {0x23, "application/vnd.wap.multipart.mixed"},
    {0x24, "application/vnd.wap.multipart.form-data"}, {0x25, "application/vnd.wap.multipart.byteranges"},
    {0x26, "application/vnd.wap.multipart.alternative"}, {0x27, "application/xml"}, {0x28, "text/xml"},
    {0x29, "application/vnd.wap.wbxml"}, {0x2A, "application/x-x968-cross-cert"},
    {0x2B, "application/x-x968-ca-cert"}, {0x2C, "application/x-x968-user-cert"}, {0x2D, "text/vnd.wap.si"},
    {0x2E, "application/vnd.wap.sic"}, {0x2F, "text/vnd.wap.sl"}, {0x30, "application/vnd.wap.slc"},
    {0x31, "text/vnd.wap.co"}, {0x32, "application/vnd.wap.coc"}, {0x33, "application/vnd.wap.multipart.related"},
    {0x34, "application/vnd.wap.sia"}, {0x35, "text/vnd.wap.connectivity-xml"},
    {0x36, "application/vnd.wap.connectivity-wbxml"}, {0x37, "application/pkcs7-mime"},
    {0x38, "application/vnd.wap.hashed-certifiate"}, {0x39, "application/vnd.wap.signed-certificate"},
    {0x3A, "application/vnd.wap.cert-response"}, {0x3B, "application/xhtml+xml"}, {0x3C, "application/wml+xml"},
    {0x3D, "text/css"}, {0x3E, "application/vnd.wap.mms-message"},
    {0x3F, "application/vnd.wap.rollover-certificate"}, {0x42, "application/vnd.syncml.dm+wbxml"},
    {0x43, "application/vnd.syncml.dm+xml"}, {0x44, "application/vnd.syncml.notification"},
    {0x4A, "application/vnd.oma.drm.rights+xml"}, {0x4B, "application/vnd.oma.drm.rights+wbxml"},
    {0x7F, "application/x-agps"}, {0x201, "application/vnd.uplanet.cacheop-wbxml"},
    {0x202, "application/vnd.uplanet.signal"}, {0x203, "application/vnd.uplanet.alert-wbxml"},
    {0x204, "application/vnd.uplanet.list-wbxml"}, {0x205, "application/vnd.uplanet.listcmd-wbxml"},
    {0x206, "application/vnd.uplanet.channel-wbxml"}, {0x207, "application/vnd.uplanet.provisioning-status-uri"},
    {0x208, "x-wap.multipart/vnd.uplanet.header-set"}, {0x209, "application/vnd.uplanet.bearer-choice-wbxml"},
    {0x20A, "application/vnd.phonecom.mmc-wbxml"}, {0x20B, "application/vnd.nokia.syncset+wbxml"},
    {0x312, "application/vnd.omaloc-supl-init"},
};
const CodeName kCharsets[] = {
    {0x3, "us-ascii"}, {0x4, "iso-8859-1"}, {0x5, "iso-8859-2"}, {0x6, "iso-8859-3"}, {0x7, "iso-8859-4"},
    {0x8, "iso-8859-5"}, {0x9, "iso-8859-6"}, {0xA, "iso-8859-7"}, {0xB, "iso-8859-8"}, {0xC, "iso-8859-9"},
    {0xD, "iso-8859-10"}, {0xE, "iso_6937-2-add"}, {0xF, "jis_x0201"}, {0x10, "jis_encoding"}, {0x11, "shift_jis"},
    {0x12, "euc-jp"}, {0x13, "extended_unix_code_fixed_width_for_japanese"}, {0x14, "bs_4730"},
    {0x15, "sen_850200_c"}, {0x16, "it"}, {0x17, "es"}, {0x18, "din_66003"}, {0x19, "ns_4551-1"},
    {0x1A, "nf_z_62-010"}, {0x1B, "iso-10646-utf-1"}, {0x1C, "iso_646.basic:1983"}, {0x1D, "invariant"},
    {0x1E, "iso_646.irv:1983"}, {0x1F, "nats-sefi"}, {0x20, "nats-sefi-add"}, {0x21, "nats-dano"},
    {0x22, "nats-dano-add"}, {0x23, "sen_850200_b"}, {0x24, "ks_c_5601-1987"}, {0x25, "iso-2022-kr"},
    {0x26, "euc-kr"}, {0x27, "iso-2022-jp"}, {0x28, "iso-2022-jp-2"}, {0x29, "jis_c6220-1969-jp"},
    {0x2A, "jis_c6220-1969-ro"}, {0x2B, "pt"}, {0x2C, "greek7-old"}, {0x2D, "latin-greek"},
    {0x2E, "nf_z_62-010_(1973)"}, {0x2F, "latin-greek-1"}, {0x30, "iso_5427"}, {0x31, "jis_c6226-1978"},
    {0x32, "bs_viewdata"}, {0x33, "inis"}, {0x34, "inis-8"}, {0x35, "inis-cyrillic"}, {0x36, "iso_5427:1981"},
    {0x37, "iso_5428:1980"}, {0x38, "gb_1988-80"}, {0x39, "gb_2312-80"}, {0x3A, "ns_4551-2"},
    {0x3B, "videotex-suppl"}, {0x3C, "pt2"}, {0x3D, "es2"}, {0x3E, "msz_7795.3"}, {0x3F, "jis_c6226-1983"},
    {0x40, "greek7"}, {0x41, "asmo_449"}, {0x42, "iso-ir-90"}, {0x43, "jis_c6229-1984-a"},
    {0x44, "jis_c6229-1984-b"}, {0x45, "jis_c6229-1984-b-add"}, {0x46, "jis_c6229-1984-hand"},
    {0x47, "jis_c6229-1984-hand-add"}, {0x48, "jis_c6229-1984-kana"}, {0x49, "iso_2033-1983"},
    {0x4A, "ansi_x3.110-1983"}, {0x4B, "t.61-7bit"}, {0x4C, "t.61-8bit"}, {0x4D, "ecma-cyrillic"},
    {0x4E, "csa_z243.4-1985-1"}, {0x4F, "csa_z243.4-1985-2"}, {0x50, "csa_z243.4-1985-gr"}, {0x51, "iso_8859-6-e"},
    {0x52, "iso_8859-6-i"}, {0x53, "t.101-g2"}, {0x54, "iso_8859-8-e"}, {0x55, "iso_8859-8-i"},
    {0x56, "csn_369103"}, {0x57, "jus_i.b1.002"}, {0x58, "iec_p27-1"}, {0x59, "jus_i.b1.003-serb"},
    {0x5A, "jus_i.b1.003-mac"}, {0x5B, "greek-ccitt"}, {0x5C, "nc_nc00-10:81"}, {0x5D, "iso_6937-2-25"},
    {0x5E, "gost_19768-74"}, {0x5F, "iso_8859-supp"}, {0x60, "iso_10367-box"}, {0x61, "latin-lap"},
    {0x62, "jis_x0212-1990"}, {0x63, "ds_2089"}, {0x64, "us-dk"}, {0x65, "dk-us"}, {0x66, "ksc5636"},
    {0x67, "unicode-1-1-utf-7"}, {0x68, "iso-2022-cn"}, {0x69, "iso-2022-cn-ext"}, {0x6A, "utf-8"},
    {0x6D, "iso-8859-13"}, {0x6E, "iso-8859-14"}, {0x6F, "iso-8859-15"}, {0x70, "iso-8859-16"}, {0x71, "gbk"},
    {0x72, "gb18030"}, {0x3E8, "iso-10646-ucs-2"}, {0x3E9, "iso-10646-ucs-4"}, {0x3EA, "iso-10646-ucs-basic"},
    {0x3EB, "iso-10646-unicode-latin1"}, {0x3EC, "iso-8859-1"}, {0x3ED, "iso-unicode-ibm-1261"},
    {0x3EE, "iso-unicode-ibm-1268"}, {0x3EF, "iso-unicode-ibm-1276"}, {0x3F0, "iso-unicode-ibm-1264"},
    {0x3F1, "iso-unicode-ibm-1265"}, {0x3F2, "unicode-1-1"}, {0x3F3, "scsu"}, {0x3F4, "utf-7"}, {0x3F5, "utf-16be"},
    {0x3F6, "utf-16le"}, {0x3F7, "utf-16"}, {0x3F8, "cesu-8"}, {0x3F9, "utf-32"}, {0x3FA, "utf-32be"},
    {0x3FB, "utf-32le"}, {0x3FC, "bocu-1"}, {0x7D0, "iso-8859-1-windows-3.0-latin-1"},
    {0x7D1, "iso-8859-1-windows-3.1-latin-1"}, {0x7D2, "iso-8859-2-windows-latin-2"},
    {0x7D3, "iso-8859-9-windows-latin-5"}, {0x7D4, "hp-roman8"}, {0x7D5, "adobe-standard-encoding"},
    {0x7D6, "ventura-us"}, {0x7D7, "ventura-international"}, {0x7D8, "dec-mcs"}, {0x7D9, "ibm850"},
    {0x7DA, "ibm852"}, {0x7DB, "ibm437"}, {0x7DC, "pc8-danish-norwegian"}, {0x7DD, "ibm862"},
    {0x7DE, "pc8-turkish"}, {0x7DF, "ibm-symbols"}, {0x7E0, "ibm-thai"}, {0x7E1, "hp-legal"}, {0x7E2, "hp-pi-font"},
    {0x7E3, "hp-math8"}, {0x7E4, "adobe-symbol-encoding"}, {0x7E5, "hp-desktop"}, {0x7E6, "ventura-math"},
    {0x7E7, "microsoft-publishing"}, {0x7E8, "windows-31j"}, {0x7E9, "gb2312"}, {0x7EA, "big5"},
    {0x7EB, "macintosh"}, {0x7EC, "ibm037"}, {0x7ED, "ibm038"}, {0x7EE, "ibm273"}, {0x7EF, "ibm274"},
    {0x7F0, "ibm275"}, {0x7F1, "ibm277"}, {0x7F2, "ibm278"}, {0x7F3, "ibm280"}, {0x7F4, "ibm281"},
    {0x7F5, "ibm284"}, {0x7F6, "ibm285"}, {0x7F7, "ibm290"}, {0x7F8, "ibm297"}, {0x7F9, "ibm420"},
    {0x7FA, "ibm423"}, {0x7FB, "ibm424"}, {0x7FC, "ibm500"}, {0x7FD, "ibm851"}, {0x7FE, "ibm855"},
    {0x7FF, "ibm857"}, {0x800, "ibm860"}, {0x801, "ibm861"}, {0x802, "ibm863"}, {0x803, "ibm864"},
    {0x804, "ibm865"}, {0x805, "ibm868"}, {0x806, "ibm869"}, {0x807, "ibm870"}, {0x808, "ibm871"},
    {0x809, "ibm880"}, {0x80A, "ibm891"}, {0x80B, "ibm903"}, {0x80C, "ibm904"}, {0x80D, "ibm905"},
    {0x80E, "ibm918"}, {0x80F, "ibm1026"}, {0x810, "ebcdic-at-de"}, {0x811, "ebcdic-at-de-a"},
    {0x812, "ebcdic-ca-fr"}, {0x813, "ebcdic-dk-no"}, {0x814, "ebcdic-dk-no-a"}, {0x815, "ebcdic-fi-se"},
    {0x816, "ebcdic-fi-se-a"}, {0x817, "ebcdic-fr"}, {0x818, "ebcdic-it"}, {0x819, "ebcdic-pt"},
    {0x81A, "ebcdic-es"}, {0x81B, "ebcdic-es-a"}, {0x81C, "ebcdic-es-s"}, {0x81D, "ebcdic-uk"},
    {0x81E, "ebcdic-us"}, {0x81F, "unknown-8bit"}, {0x820, "mnemonic"}, {0x821, "mnem"}, {0x822, "viscii"},
    {0x823, "viqr"}, {0x824, "koi8-r"}, {0x825, "hz-gb-2312"}, {0x826, "ibm866"}, {0x827, "ibm775"},
    {0x828, "koi8-u"}, {0x829, "ibm00858"}, {0x82A, "ibm00924"}, {0x82B, "ibm01140"}, {0x82C, "ibm01141"},
    {0x82D, "ibm01142"}, {0x82E, "ibm01143"}, {0x82F, "ibm01144"}, {0x830, "ibm01145"}, {0x831, "ibm01146"},
    {0x832, "ibm01147"}, {0x833, "ibm01148"}, {0x834, "ibm01149"}, {0x835, "big5-hkscs"}, {0x836, "ibm1047"},
    {0x837, "ptcp154"}, {0x8CA, "windows-1250"}, {0x8CB, "windows-1251"}, {0x8CD, "windows-1253"},
    {0x8CE, "windows-1254"}, {0x8CF, "windows-1255"}, {0x8D0, "windows-1256"}, {0x8D1, "windows-1257"},
    {0x8D2, "windows-1258"}, {0x8D3, "tis-620"},
};
const CodeName kLanguageCodes[] = {
    {0x1, "aa"}, {0x2, "ab"}, {0x3, "af"}, {0x4, "am"}, {0x5, "ar"}, {0x6, "as"}, {0x7, "ay"}, {0x8, "az"},
    {0x9, "ba"}, {0xA, "be"}, {0xB, "bg"}, {0xC, "bh"}, {0xD, "bi"}, {0xE, "bn"}, {0xF, "bo"}, {0x10, "br"},
    {0x11, "ca"}, {0x12, "co"}, {0x13, "cs"}, {0x14, "cy"}, {0x15, "da"}, {0x16, "de"}, {0x17, "dz"}, {0x18, "el"},
    {0x19, "en"}, {0x1A, "eo"}, {0x1B, "es"}, {0x1C, "et"}, {0x1D, "eu"}, {0x1E, "fa"}, {0x1F, "fi"}, {0x20, "fj"},
    {0x21, "ur"}, {0x22, "fr"}, {0x23, "uz"}, {0x24, "ga"}, {0x25, "gd"}, {0x26, "gl"}, {0x27, "gn"}, {0x28, "gu"},
    {0x29, "ha"}, {0x2A, "he"}, {0x2B, "hi"}, {0x2C, "hr"}, {0x2D, "hu"}, {0x2E, "hy"}, {0x2F, "vi"}, {0x30, "id"},
    {0x31, "wo"}, {0x32, "xh"}, {0x33, "is"}, {0x34, "it"}, {0x35, "yo"}, {0x36, "ja"}, {0x37, "jw"}, {0x38, "ka"},
    {0x39, "kk"}, {0x3A, "za"}, {0x3B, "km"}, {0x3C, "kn"}, {0x3D, "ko"}, {0x3E, "ks"}, {0x3F, "ku"}, {0x40, "ky"},
    {0x41, "zh"}, {0x42, "ln"}, {0x43, "lo"}, {0x44, "lt"}, {0x45, "lv"}, {0x46, "mg"}, {0x47, "mi"}, {0x48, "mk"},
    {0x49, "ml"}, {0x4A, "mn"}, {0x4B, "mo"}, {0x4C, "mr"}, {0x4D, "ms"}, {0x4E, "mt"}, {0x4F, "my"}, {0x50, "uk"},
    {0x51, "ne"}, {0x52, "nl"}, {0x53, "no"}, {0x54, "oc"}, {0x55, "om"}, {0x56, "or"}, {0x57, "pa"}, {0x58, "po"},
    {0x59, "ps"}, {0x5A, "pt"}, {0x5B, "qu"}, {0x5C, "zu"}, {0x5D, "rn"}, {0x5E, "ro"}, {0x5F, "ru"}, {0x60, "rw"},
    {0x61, "sa"}, {0x62, "sd"}, {0x63, "sg"}, {0x64, "sh"}, {0x65, "si"}, {0x66, "sk"}, {0x67, "sl"}, {0x68, "sm"},
    {0x69, "sn"}, {0x6A, "so"}, {0x6B, "sq"}, {0x6C, "sr"}, {0x6D, "ss"}, {0x6E, "st"}, {0x6F, "su"}, {0x70, "sv"},
    {0x71, "sw"}, {0x72, "ta"}, {0x73, "te"}, {0x74, "tg"}, {0x75, "th"}, {0x76, "ti"}, {0x77, "tk"}, {0x78, "tl"},
    {0x79, "tn"}, {0x7A, "to"}, {0x7B, "tr"}, {0x7C, "ts"}, {0x7D, "tt"}, {0x7E, "tw"}, {0x7F, "ug"}, {0x81, "na"},
    {0x82, "fo"}, {0x83, "fy"}, {0x84, "ia"}, {0x85, "vo"}, {0x86, "ie"}, {0x87, "ik"}, {0x88, "yi"}, {0x89, "iu"},
    {0x8A, "kl"}, {0x8B, "la"}, {0x8C, "rm"},
};
const CodeName kLanguageNames[] = {
    {0x1, "afar"}, {0x2, "abkhazian"}, {0x3, "afrikaans"}, {0x4, "amharic"}, {0x5, "arabic"}, {0x6, "assamese"},
    {0x7, "aymara"}, {0x8, "azerbaijani"}, {0x9, "bashkir"}, {0xA, "byelorussian"}, {0xB, "bulgarian"},
    {0xC, "bihari"}, {0xD, "bislama"}, {0xE, "bengali"}, {0xE, "bangla"}, {0xF, "tibetan"}, {0x10, "breton"},
    {0x11, "catalan"}, {0x12, "corsican"}, {0x13, "czech"}, {0x14, "welsh"}, {0x15, "danish"}, {0x16, "german"},
    {0x17, "bhutani"}, {0x18, "greek"}, {0x19, "english"}, {0x1A, "esperanto"}, {0x1B, "spanish"},
    {0x1C, "estonian"}, {0x1D, "basque"}, {0x1E, "persian"}, {0x1F, "finnish"}, {0x20, "fiji"}, {0x21, "urdu"},
    {0x22, "french"}, {0x23, "uzbek"}, {0x24, "irish"}, {0x25, "scots gealic"}, {0x26, "galician"},
    {0x27, "guarani"}, {0x28, "gujarati"}, {0x29, "hausa"}, {0x2A, "hebrew"}, {0x2B, "hindi"}, {0x2C, "croatian"},
    {0x2D, "hungarian"}, {0x2E, "armenian"}, {0x2F, "vietnamese"}, {0x30, "indonesian"}, {0x31, "wolof"},
    {0x32, "xhosa"}, {0x33, "icelandic"}, {0x34, "italian"}, {0x35, "yoruba"}, {0x36, "japanese"},
    {0x37, "javanese"}, {0x38, "georgian"}, {0x39, "kazakh"}, {0x3A, "zhuang"}, {0x3B, "cambodian"},
    {0x3C, "kannada"}, {0x3D, "korean"}, {0x3E, "kashmiri"}, {0x3F, "kurdish"}, {0x40, "kirghiz"},
    {0x41, "chinese"}, {0x42, "lingala"}, {0x43, "laothian"}, {0x44, "lithuanian"}, {0x45, "latvian"},
    {0x45, "lettish"}, {0x46, "malagasy"}, {0x47, "maori"}, {0x48, "macedonian"}, {0x49, "malayalam"},
    {0x4A, "mongolian"}, {0x4B, "moldavian"}, {0x4C, "marathi"}, {0x4D, "malay"}, {0x4E, "maltese"},
    {0x4F, "burmese"}, {0x50, "ukrainian"}, {0x51, "nepali"}, {0x52, "dutch"}, {0x53, "norwegian"},
    {0x54, "occitan"}, {0x55, "afan"}, {0x55, "oromo"}, {0x56, "oriya"}, {0x57, "punjabi"}, {0x58, "polish"},
    {0x59, "pashto"}, {0x59, "pushto"}, {0x5A, "portugese"}, {0x5B, "quechua"}, {0x5C, "zulu"}, {0x5D, "kirundi"},
    {0x5E, "romanian"}, {0x5F, "russian"}, {0x60, "kinyarwanda"}, {0x61, "sanskrit"}, {0x62, "sindhi"},
    {0x63, "sangho"}, {0x64, "serbo-croatian"}, {0x65, "sinhalese"}, {0x66, "slovak"}, {0x67, "slovenian"},
    {0x68, "samoan"}, {0x69, "shona"}, {0x6A, "somali"}, {0x6B, "albanian"}, {0x6C, "serbian"}, {0x6D, "siswati"},
    {0x6E, "sesotho"}, {0x6F, "sundanese"}, {0x70, "sewdish"}, {0x71, "swahili"}, {0x72, "tamil"}, {0x73, "telugu"},
    {0x74, "tajik"}, {0x75, "thai"}, {0x76, "tigrinya"}, {0x77, "turkmen"}, {0x78, "tagalog"}, {0x79, "setswana"},
    {0x7A, "tonga"}, {0x7B, "turkish"}, {0x7C, "tsonga"}, {0x7D, "tatar"}, {0x7E, "twi"}, {0x7F, "uighur"},
    {0x81, "nauru"}, {0x82, "faeroese"}, {0x83, "frisian"}, {0x84, "interlingua"}, {0x85, "volapuk"},
    {0x86, "interlingue"}, {0x87, "inupiak"}, {0x88, "yiddish"}, {0x89, "inuktitu"}, {0x8A, "greenlandic"},
    {0x8B, "latin"}, {0x8C, "rhaeto-romance"},
};
const CodeName kHeaderNames[] = {
    {0x0, "accept"}, {0x1, "accept-charset"}, {0x2, "accept-encoding"}, {0x3, "accept-language"},
    {0x4, "accept-ranges"}, {0x5, "age"}, {0x6, "allow"}, {0x7, "authorization"}, {0x8, "cache-control"},
    {0x9, "connection"}, {0xA, "content-base"}, {0xB, "content-encoding"}, {0xC, "content-language"},
    {0xD, "content-length"}, {0xE, "content-location"}, {0xF, "content-md5"}, {0x10, "content-range"},
    {0x11, "content-type"}, {0x12, "date"}, {0x13, "etag"}, {0x14, "expires"}, {0x15, "from"}, {0x16, "host"},
    {0x17, "if-modified-since"}, {0x18, "if-match"}, {0x19, "if-none-match"}, {0x1A, "if-range"},
    {0x1B, "if-unmodified-since"}, {0x1C, "location"}, {0x1D, "last-modified"}, {0x1E, "max-forwards"},
    {0x1F, "pragma"}, {0x20, "proxy-authenticate"}, {0x21, "proxy-authorization"}, {0x22, "public"},
    {0x23, "range"}, {0x24, "referer"}, {0x25, "retry-after"}, {0x26, "server"}, {0x27, "transfer-encoding"},
    {0x28, "upgrade"}, {0x29, "user-agent"}, {0x2A, "vary"}, {0x2B, "via"}, {0x2C, "warning"},
    {0x2D, "www-authenticate"}, {0x2E, "content-disposition"}, {0x2F, "x-wap-application-id"},
    {0x30, "x-wap-content-uri"}, {0x31, "x-wap-initiator-uri"}, {0x32, "accept-application"},
    {0x33, "bearer-indication"}, {0x34, "push-flag"}, {0x35, "profile"}, {0x36, "profile_diff"},
    {0x37, "profile-warning"}, {0x38, "expect"}, {0x39, "te"}, {0x3A, "trailer"}, {0x3B, "accept-charset"},
    {0x3C, "accept-encoding"}, {0x3D, "cache-control"}, {0x3E, "content-range"}, {0x3F, "x-wap-tod"},
    {0x40, "content-id"}, {0x41, "set-cookie"}, {0x42, "cookie"}, {0x43, "encoding-version"},
    {0x44, "profile-warning"}, {0x45, "content-disposition"}, {0x46, "x-wap-security"}, {0x47, "cache-control"},
};
const CodeName kParamNames[] = {
    {0x0, "q"}, {0x1, "charset"}, {0x2, "level"}, {0x3, "type"}, {0x4, nullptr}, {0x5, "name"}, {0x6, "filename"},
    {0x7, "differences"}, {0x8, "padding"}, {0x9, "type"}, {0xA, "start"}, {0xB, "start_info"}, {0xC, "comment"},
    {0xD, "domain"}, {0xE, "max_age"}, {0xF, "path"}, {0x10, "secure"}, {0x11, "sec"}, {0x12, "mac"},
    {0x13, "creation-date"}, {0x14, "modification-date"}, {0x15, "read-date"}, {0x16, "size"}, {0x17, "name"},
    {0x18, "filename"}, {0x19, "start"}, {0x1A, "start-info"}, {0x1B, "comment"}, {0x1C, "domain"}, {0x1D, "path"},
};
const CodeName kPushAppIds[] = {
    {0x0, "x-wap-application:*"}, {0x1, "x-wap-application:push.sia"}, {0x2, "x-wap-application:wml.ua"},
    {0x3, "x-wap-application:wta.ua"}, {0x4, "x-wap-application:mms.ua"}, {0x5, "x-wap-application:push.syncml"},
    {0x7, "x-wap-application:syncml.dm"}, {0x8, "x-wap-application:drm.ua"}, {0x9, "x-wap-application:emn.ua"},
    {0x10, "x-oma-application:ulp.ua"}, {0x8005, "x-vantrell:location.ua"}, {0x901E, "x-oma-vantrell:screen3.ua"},
    {0x9034, "x-microsoft:drm.meter"}, {0x9035, "x-microsoft:drm.license"},
};
} // namespace

namespace {
Bytes integer_value(uint32_t v) {
    if (v < 128) return bytes({static_cast<int>(0x80 | v)});
    if (v < 0x100) return bytes({0x01, static_cast<int>(v)});
    if (v < 0x10000) return bytes({0x02, static_cast<int>(v >> 8), static_cast<int>(v & 0xFF)});
    return bytes({0x03, static_cast<int>(v >> 16), static_cast<int>((v >> 8) & 0xFF), static_cast<int>(v & 0xFF)});
}
Bytes long_integer(uint32_t v) {
    if (v < 0x100) return bytes({0x01, static_cast<int>(v)});
    return bytes({0x02, static_cast<int>(v >> 8), static_cast<int>(v & 0xFF)});
}
// A general-form value: Value-length (short form) and the octets.
Bytes with_length(const Bytes &inner) { return cat({bytes({static_cast<int>(inner.size())}), inner}); }
} // namespace

TEST(ApiTableRows, EveryContentTypeDecodesByCode) {
    ASSERT_EQ(82u, sizeof kContentTypes / sizeof kContentTypes[0]);
    for (size_t row = 0; row < 82; ++row) {
        const CodeName &r = kContentTypes[row];
        // Long-integer code: searched by code.
        EXPECT_EQ(r.name, decode_ct(with_length(long_integer(r.code))).text) << row;
        // Short-integer in the general form: the row index.
        EXPECT_EQ(r.name, decode_ct(bytes({0x01, static_cast<int>(0x80 | row)})).text) << row;
        // Constrained form: codes 0..63 directly, 64..81 by code.
        if (r.code <= 81) EXPECT_EQ(r.name, decode_ct(bytes({static_cast<int>(0x80 | r.code)})).text) << row;
    }
}

TEST(ApiTableRows, EveryContentTypeEncodesWithinItsVersion) {
    const char *versions[] = {"1.1", "1.2", "1.3", "1.4"};
    const size_t limits[] = {46, 53, 55, 82};
    for (int v = 0; v < 4; ++v) {
        for (size_t row = 0; row < 82; ++row) {
            const CodeName &r = kContentTypes[row];
            std::string got = encoded_ct_hex(r.name, versions[v]);
            if (row >= limits[v])
                EXPECT_EQ(hex(cstr(r.name)), got) << versions[v] << " " << r.name;
            else if (r.code < 128)
                EXPECT_EQ(hex(bytes({static_cast<int>(0x80 | r.code)})), got) << versions[v] << " " << r.name;
            else
                EXPECT_EQ("03 00 00", got.substr(0, 8)) << versions[v] << " " << r.name;
        }
    }
}

TEST(ApiTableRows, EveryCharsetDecodesAndEncodes) {
    ASSERT_EQ(244u, sizeof kCharsets / sizeof kCharsets[0]);
    for (size_t row = 0; row < 244; ++row) {
        const CodeName &r = kCharsets[row];
        // Decoding takes the first row carrying the MIBenum.
        const Bytes value = with_length(cat({bytes({0x83, 0x81}), integer_value(r.code)}));
        EXPECT_EQ(std::string("text/plain;charset=") + r.name, decode_ct(value).text) << row;
        // Encoding takes the first row carrying the name.
        size_t first = 0;
        while (std::strcmp(kCharsets[first].name, r.name) != 0) ++first;
        const Bytes expect = with_length(cat({bytes({0x83, 0x81}), integer_value(kCharsets[first].code)}));
        EXPECT_EQ(hex(expect), encoded_ct_hex((std::string("text/plain; charset=") + r.name).c_str(), "1.1"))
            << r.name;
    }
}

TEST(ApiTableRows, EveryLanguageCodeDecodes) {
    ASSERT_EQ(139u, sizeof kLanguageCodes / sizeof kLanguageCodes[0]);
    ASSERT_EQ(143u, sizeof kLanguageNames / sizeof kLanguageNames[0]);
    const std::string filler(150, 'z');
    const Bytes tail = cat({cstr("x"), cstr(filler.c_str())});
    for (const CodeName &r : kLanguageCodes) {
        const char *name = nullptr;
        for (const CodeName &n : kLanguageNames)
            if (n.code == r.code) {
                name = n.name;
                break;
            }
        ASSERT_NE(nullptr, name) << r.name;
        if (r.code < 128) {
            EXPECT_EQ(std::string("accept-language:") + name + "\n",
                      decoded_text(bytes({0x83, static_cast<int>(0x80 | r.code)})))
                << r.name;
            EXPECT_EQ(std::string("content-language:") + r.name + "\n",
                      decoded_text(bytes({0x8C, static_cast<int>(0x80 | r.code)})))
                << r.name;
        } else {
            EXPECT_EQ(std::string("content-language:") + r.name + "\nx:" + filler + "\n",
                      decoded_text(cat({bytes({0x8C, 0x01, static_cast<int>(r.code)}), tail})))
                << r.name;
        }
    }
}

TEST(ApiTableRows, EveryLanguageCodeAndNameEncodes) {
    for (const CodeName *table : {kLanguageCodes, kLanguageNames}) {
        const size_t rows = table == kLanguageCodes ? 139 : 143;
        for (size_t i = 0; i < rows; ++i) {
            const CodeName &r = table[i];
            const Bytes accept = r.code < 128 ? bytes({0x83, static_cast<int>(0x80 | r.code)})
                                              : bytes({0x83, 0x02, 0x01, static_cast<int>(r.code)});
            EXPECT_EQ(hex(accept), encoded_hex(std::string("accept-language: ") + r.name, "1.4")) << r.name;
            EXPECT_EQ(hex(cat({bytes({0x8C}), integer_value(r.code)})),
                      encoded_hex(std::string("content-language: ") + r.name, "1.4"))
                << r.name;
        }
    }
}

TEST(ApiTableRows, EveryHeaderNameThroughTheDifferencesParameter) {
    ASSERT_EQ(72u, sizeof kHeaderNames / sizeof kHeaderNames[0]);
    for (const CodeName &r : kHeaderNames) {
        EXPECT_EQ(std::string("text/plain;differences=") + r.name,
                  decode_ct(bytes({0x03, 0x83, 0x87, static_cast<int>(0x80 | r.code)})).text)
            << r.code;
        // Encoding finds the lowest code carrying the name.
        uint32_t lowest = 0;
        while (std::strcmp(kHeaderNames[lowest].name, r.name) != 0) ++lowest;
        EXPECT_EQ(hex(bytes({0x03, 0x83, 0x87, static_cast<int>(0x80 | lowest)})),
                  encoded_ct_hex((std::string("text/plain; differences=") + r.name).c_str(), "1.1"))
            << r.name;
    }
    // Past the table the typed value is refused and read again untyped: the
    // Short-integer's seven bits in decimal.
    EXPECT_EQ("text/plain;differences=72", decode_ct(bytes({0x03, 0x83, 0x87, 0xC8})).text);
}

TEST(ApiTableRows, EveryHeaderNameAsAVaryValue) {
    for (const CodeName &r : kHeaderNames)
        EXPECT_EQ(std::string("vary:") + r.name + "\n", decoded_text(bytes({0xAA, static_cast<int>(0x80 | r.code)})))
            << r.code;
}

TEST(ApiTableRows, EveryParameterNameWithoutValue) {
    ASSERT_EQ(30u, sizeof kParamNames / sizeof kParamNames[0]);
    for (const CodeName &r : kParamNames) {
        Content c = decode_ct(bytes({0x03, 0x83, static_cast<int>(0x80 | r.code), 0x00}));
        EXPECT_EQ(WSP_OK, c.status) << r.code;
        EXPECT_EQ(4, c.consumed) << r.code;
        if (r.name == nullptr)
            EXPECT_EQ("", c.text);
        else
            EXPECT_EQ(std::string("text/plain;") + r.name, c.text) << r.code;
    }
}

TEST(ApiTableRows, EveryPushApplicationId) {
    ASSERT_EQ(14u, sizeof kPushAppIds / sizeof kPushAppIds[0]);
    for (const CodeName &r : kPushAppIds) {
        EXPECT_EQ(std::string("x-wap-application-id:") + r.name + "\n",
                  decoded_text(cat({bytes({0xAF}), integer_value(r.code)})))
            << r.name;
        EXPECT_EQ(hex(cat({bytes({0xAF}), integer_value(r.code)})),
                  encoded_hex(std::string("x-wap-application-id: ") + r.name, "1.4"))
            << r.name;
    }
}

TEST(ApiTableRows, CacheDirectivesDispositionsAndMethods) {
    const char *directives[] = {"no-cache", "no-store",     "max-age",         "max-stale",
                                "min-fresh", "only-if-cached", "public",        "private",
                                "no-transform", "must-revalidate", "proxy-revalidate"};
    for (int d = 0; d < 11; ++d) {
        std::string got = decoded_text(bytes({0x88, 0x80 | d}));
        // max-age and min-fresh need a value: bare, they are dropped.
        EXPECT_EQ(d == 2 || d == 4 ? std::string() : std::string("cache-control:") + directives[d] + "\n", got) << d;
    }
    EXPECT_EQ("cache-control:s-maxage=5\n", decoded_text(bytes({0xC7, 0x02, 0x8B, 0x85})));
    EXPECT_EQ("cache-control:max-age=60\n", decoded_text(bytes({0x88, 0x02, 0x82, 0xBC})));
    const char *dispositions[] = {"form-data", "attachment", "inline"};
    for (int d = 0; d < 3; ++d)
        EXPECT_EQ(std::string("content-disposition:") + dispositions[d] + "\n",
                  decoded_text(bytes({0xAE, 0x01, 0x80 | d})));
    const char *methods[] = {"GET", "OPTIONS", "HEAD", "DELETE", "TRACE", "POST", "PUT"};
    const int method_codes[] = {0x40, 0x41, 0x42, 0x43, 0x44, 0x60, 0x61};
    for (int m = 0; m < 7; ++m) {
        EXPECT_EQ(std::string("allow:") + methods[m] + "\n", decoded_text(bytes({0x86, 0x80 | method_codes[m]})));
        EXPECT_EQ(hex(bytes({0x86, 0x80 | method_codes[m]})), encoded_hex(std::string("allow: ") + methods[m], "1.1"));
    }
    const char *codings[] = {"chunked", "identity", "gzip", "compress", "deflate"};
    for (int c = 0; c < 5; ++c)
        EXPECT_EQ(hex(bytes({0xB9, 0x01, 0x82 + c})), encoded_hex(std::string("te: ") + codings[c], "1.3"));
    const char *content_codings[] = {"gzip", "compress", "deflate"};
    for (int c = 0; c < 3; ++c) {
        EXPECT_EQ(std::string("content-encoding:") + content_codings[c] + "\n", decoded_text(bytes({0x8B, 0x80 | c})));
        EXPECT_EQ(std::string("accept-encoding:") + content_codings[c] + "\n", decoded_text(bytes({0x82, 0x80 | c})));
    }
}
