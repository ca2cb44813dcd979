#include "inputs.h"

#include <cstdio>

namespace bench {

const HeaderText kBrowserRequest = {
    "browser_request",
    "Accept: application/vnd.wap.wmlc, application/vnd.wap.wmlscriptc, text/html;q=0.9, "
    "image/gif, image/jpeg;q=0.8, */*;q=0.1\n"
    "Accept-Charset: utf-8, iso-8859-1;q=0.5\n"
    "Accept-Encoding: gzip, deflate\n"
    "Accept-Language: en, fr;q=0.7\n"
    "Cache-Control: no-cache\n"
    "Connection: close\n"
    "Host: wap.example.com\n"
    "User-Agent: ExampleBrowser/2.1 (X200; MIDP-2.0; CLDC-1.1)\n"
    "Referer: http://wap.example.com/index.wml\n"
    "If-Modified-Since: Tue, 15 Nov 1994 08:12:31 GMT\n"
    "Authorization: Basic wapuser:secret42\n"
    "Pragma: no-cache\n"
    "X-Wap-Profile: \"http://example.com/uaprof/x200.xml\"\n",
};

const HeaderText kServerReply = {
    "server_reply",
    "Date: Tue, 24 Nov 2026 01:00:00 GMT\n"
    "Last-Modified: Mon, 23 Nov 2026 18:30:00 GMT\n"
    "Expires: Wed, 25 Nov 2026 01:00:00 GMT\n"
    "Content-Length: 4660\n"
    "Cache-Control: max-age=3600\n"
    "ETag: \"5f2a-4660\"\n"
    "Server: ExampleServer/1.4\n"
    "Accept-Ranges: bytes\n"
    "Content-Language: en\n"
    "Age: 120\n"
    "Via: 1.1 gateway.example.com\n"
    "Vary: Accept-Encoding\n"
    "Content-Location: http://wap.example.com/news.wml\n"
    "X-Powered-By: ExampleGateway/3.0\n",
};

namespace {

std::vector<uint8_t> operator+(std::vector<uint8_t> head, const std::string &text) {
    head.insert(head.end(), text.begin(), text.end());
    head.push_back(0);
    return head;
}

std::vector<uint8_t> join(std::initializer_list<std::vector<uint8_t>> parts) {
    std::vector<uint8_t> all;
    for (const auto &part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

std::vector<PushMessage> make_push_messages() {
    std::vector<PushMessage> messages;
    // m-notification-ind: type, HeadersLen 5, mms-message, application id
    // mms.ua, Push-Flag 0, then the notification as the body.
    messages.push_back({
        "mms_notification",
        join({{0x06, 0x05, 0xBE, 0xAF, 0x84, 0xB4, 0x80},
              {0x8C, 0x82, 0x98, 'T', '0', '0', '0', '1', 0x00, 0x8D, 0x92, 0x89, 0x01, 0x81, 0x8A,
               0x80, 0x8E, 0x02, 0x1F, 0x40, 0x88, 0x05, 0x81, 0x03, 0x09, 0x3A, 0x80},
              std::vector<uint8_t>{0x83} + "http://mmsc.example.com/m/0001"}),
        0,
        "application/vnd.wap.mms-message",
        "X-Wap-Application-Id: x-wap-application:mms.ua\n"
        "Push-Flag: 0\n",
    });
    // Service indication over connectionless WSP: transaction id 1, type,
    // HeadersLen 27, sic, application id wml.ua, one application header,
    // then the WBXML document.
    messages.push_back({
        "service_indication",
        join({{0x01, 0x06, 0x1B, 0xAE, 0xAF, 0x82},
              std::vector<uint8_t>{} + "X-Example-Source" + "portal",
              {0x02, 0x05, 0x6A, 0x00, 0x45, 0xC6, 0x0C, 0x03},
              std::vector<uint8_t>{} + "example.com/news",
              std::vector<uint8_t>{0x01, 0x03} + "Breaking news",
              {0x01, 0x01}}),
        1,
        "application/vnd.wap.sic",
        "X-Wap-Application-Id: x-wap-application:wml.ua\n"
        "X-Example-Source: portal\n",
    });
    // Provisioning document: HeadersLen 75, a general-form content type
    // (connectivity-wbxml, sec=1, a 40-character mac), X-Wap-Initiator-URI,
    // Push-Flag 1, then the WBXML document.
    messages.push_back({
        "provisioning",
        join({{0x06, 0x4B, 0x1F, 0x2D, 0xB6, 0x91, 0x81, 0x92},
              std::vector<uint8_t>{} + "9A3C0E5F7B21D48C6E0F3A9B2C7D1E8F40A5B6C3",
              std::vector<uint8_t>{0xB1} + "http://prov.example.com/",
              {0xB4, 0x81},
              {0x03, 0x0B, 0x6A, 0x00, 0x45, 0xC6, 0x56, 0x01, 0x87, 0x07, 0x01, 0x01}}),
        0,
        "application/vnd.wap.connectivity-wbxml; sec=1; mac=9A3C0E5F7B21D48C6E0F3A9B2C7D1E8F40A5B6C3",
        "X-Wap-Initiator-URI: http://prov.example.com/\n"
        "Push-Flag: 1\n",
    });
    return messages;
}

// Every eighth application header is followed by a Content-Length.
constexpr unsigned kContentLengthEvery = 8;

} // namespace

const std::vector<PushMessage> &push_messages() {
    static const std::vector<PushMessage> messages = make_push_messages();
    return messages;
}

const std::size_t kScalingSizes[6] = {128, 512, 2048, 8192, 16384, 32768};

std::vector<uint8_t> distinct_header_block(std::size_t octets) {
    const std::vector<uint8_t> content_length = {0x8D, 0x02, 0x12, 0x34}; // 4660
    std::vector<uint8_t> block = std::vector<uint8_t>{0xA9} + "Handset/2.0 Browser/1.1";
    block.insert(block.end(), {0x81, 0xEA}); // Accept-Charset: utf-8
    block.insert(block.end(), content_length.begin(), content_length.end());

    // An application header is 26 octets, a Content-Length 4, the closing
    // header at least 8: stop while the closing header can take up the rest.
    const std::size_t largest_step = 26 + 4 + 8;
    char name[16];
    char value[16];
    for (unsigned i = 1; block.size() + largest_step <= octets; ++i) {
        std::snprintf(name, sizeof name, "x-bench-%05u", i);
        std::snprintf(value, sizeof value, "value-%05u", i);
        block = std::move(block) + name + value;
        if (i % kContentLengthEvery == 0) {
            block.insert(block.end(), content_length.begin(), content_length.end());
        }
    }
    // "x-pad" NUL, the value, NUL: 7 octets around the value.
    block = std::move(block) + "x-pad" + std::string(octets - block.size() - 7, 'p');
    return block;
}

std::string distinct_header_text(std::size_t octets) {
    std::string text = "User-Agent: Handset/2.0 Browser/1.1\n"
                       "Accept-Charset: utf-8\n"
                       "Content-Length: 4660\n";
    // An application header line is 27 characters, a Content-Length line 21,
    // the closing line at least 9.
    const std::size_t largest_step = 27 + 21 + 9;
    char line[40];
    for (unsigned i = 1; text.size() + largest_step <= octets; ++i) {
        std::snprintf(line, sizeof line, "X-Bench-%05u: value-%05u\n", i, i);
        text += line;
        if (i % kContentLengthEvery == 0) {
            text += "Content-Length: 4660\n";
        }
    }
    // "X-Pad: " and the closing line feed: 8 characters around the value.
    text += "X-Pad: " + std::string(octets - text.size() - 8, 'p') + "\n";
    return text;
}

} // namespace bench
