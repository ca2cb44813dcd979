# Cases for `wsptool explain`, the notes and failure reports of the decode
# commands and the failing-line report of encode-headers.  Included from
# tools/CMakeLists.txt inside its testing block (wsptool_case is defined
# there); expected outputs live in tests/expected/.
set(EXPLAIN_EXPECTED ${CMAKE_CURRENT_SOURCE_DIR}/tests/expected)

# A block with every fate of a well-known and an application header:
# written, merged, refused by its decoder, refused by the merging writer,
# a raw value, and a content type that is never written out.
set(EXPLAIN_MIXED "AF 84  B4 81  78 2D 46 6F 6F 00 61 00  78 2D 66 6F 6F 00 62 00"
                  "92 83  78 2D 72 61 77 00 85  84 80  84 81  91 83")
wsptool_case(explain_block EXIT 0
  EXPECTED ${EXPLAIN_EXPECTED}/explain-block.txt
  ARGS explain ${EXPLAIN_MIXED})
wsptool_case(explain_block_json EXIT 0
  EXPECTED ${EXPLAIN_EXPECTED}/explain-block.json
  ARGS explain --json ${EXPLAIN_MIXED})
wsptool_case(explain_headers_flag EXIT 0
  EXPECTED ${EXPLAIN_EXPECTED}/explain-block.txt
  ARGS explain --headers ${EXPLAIN_MIXED})

# Encoding version 1.1, a shift to a page that is stepped over without a
# page list, the way back to page 1, and an octet that stops the walk.
set(EXPLAIN_PAGES "AF 84  7F 02  8D 85  78 00 61 00  01  B4 81  8D 85  00 8D 85")
wsptool_case(explain_version_and_pages EXIT 1
  EXPECTED ${EXPLAIN_EXPECTED}/explain-pages-v1.1.txt
  ARGS explain -V 1.1 ${EXPLAIN_PAGES})
wsptool_case(explain_version_and_pages_json EXIT 1
  EXPECTED ${EXPLAIN_EXPECTED}/explain-pages-v1.1.json
  ARGS explain --json --wsp-version 1.1 ${EXPLAIN_PAGES})

# Application names of 29 (written) and 30 characters (stepped over whole).
wsptool_case(explain_long_name EXIT 0
  EXPECTED ${EXPLAIN_EXPECTED}/explain-long-name.txt
  ARGS explain "782D6E616D652D6F662D7477656E74792D6E696E652D6368617273310000"
               "782D6E616D652D6F662D7468697274792D636861726163746572732D787900 6100")
wsptool_case(explain_empty EXIT 0
  EXPECTED ${EXPLAIN_EXPECTED}/explain-empty.txt
  ARGS explain)

# Push PDUs: the fields before the header block, the headers, the data.
wsptool_case(explain_push_mms EXIT 0
  EXPECTED ${EXPLAIN_EXPECTED}/explain-push-mms.txt
  ARGS explain --push --file ${WSPTOOL_EXAMPLES}/mms-notification.hex)
wsptool_case(explain_push_tid_json EXIT 0
  EXPECTED ${EXPLAIN_EXPECTED}/explain-push-si-v1.1.json
  ARGS explain --push --tid -V 1.1 --json --file ${WSPTOOL_EXAMPLES}/service-indication.hex)
wsptool_case(explain_push_short EXIT 1
  EXPECTED ${EXPLAIN_EXPECTED}/explain-push-short.txt
  ARGS explain --push 06 09 83)
wsptool_case(explain_push_empty EXIT 2
  STDERR_REGEX "^wsptool: the PDU is empty after its transaction id\n$"
  ARGS explain --push --tid 01)

wsptool_case(explain_tid_needs_push EXIT 2 STDERR_REGEX "--tid" ARGS explain --tid 06)
wsptool_case(explain_push_excludes_headers EXIT 2 ARGS explain --push --headers 06)
wsptool_case(explain_bad_version EXIT 2 STDERR_REGEX "--wsp-version" ARGS explain -V 2.0 00)
wsptool_case(help_explain EXIT 0
  STDOUT_REGEX "--wsp-version.*--headers.*--push.*--tid.*--json.*--page"
  ARGS explain --help)

# Notes for headers stepped over, --quiet, and failures that keep the lines
# decoded before them.
wsptool_case(decode_headers_notes EXIT 0
  STDOUT_REGEX "^x-foo:a\n$"
  EXPECTED_STDERR ${EXPLAIN_EXPECTED}/decode-headers-notes.err
  ARGS decode-headers -V 1.1 "AF 84  78 2D 46 6F 6F 00 61 00  92 83  91 83")
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/empty.txt "")
wsptool_case(decode_headers_quiet EXIT 0
  STDOUT_REGEX "^x-foo:a\n$"
  EXPECTED_STDERR ${CMAKE_CURRENT_BINARY_DIR}/empty.txt
  ARGS decode-headers -q -V 1.1 "AF 84  78 2D 46 6F 6F 00 61 00  92 83  91 83")
wsptool_case(decode_headers_failure_keeps_lines EXIT 1
  EXPECTED ${EXPLAIN_EXPECTED}/decode-headers-failure.out
  EXPECTED_STDERR ${EXPLAIN_EXPECTED}/decode-headers-failure.err
  ARGS decode-headers "B4 81  78 00 61 00  78 00 62 00  7F")
wsptool_case(decode_push_notes EXIT 0
  EXPECTED ${EXPLAIN_EXPECTED}/decode-push-mms-v1.1.out
  EXPECTED_STDERR ${EXPLAIN_EXPECTED}/decode-push-mms-v1.1.err
  ARGS decode-push -V 1.1 --file ${WSPTOOL_EXAMPLES}/mms-notification.hex)
wsptool_case(decode_push_failure_keeps_lines EXIT 1
  EXPECTED ${EXPLAIN_EXPECTED}/decode-push-failure.out
  EXPECTED_STDERR ${EXPLAIN_EXPECTED}/decode-push-failure.err
  ARGS decode-push "06 07 83 B4 81 78 00 61 22 FF")

# encode-headers names the line that made the encoder fail.
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/lines-content-type.txt
  "Accept: text/html\nX-Foo: bar\nContent-Type: text/plain\nAge: 5\n")
wsptool_case(encode_headers_failing_line EXIT 1
  EXPECTED_STDERR ${EXPLAIN_EXPECTED}/encode-headers-content-type.err
  STDIN ${CMAKE_CURRENT_BINARY_DIR}/lines-content-type.txt
  ARGS encode-headers)
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/lines-set-cookie.txt
  "Age: 5\r\nSet-Cookie: a=b\r\n")
wsptool_case(encode_headers_failing_line_no_encoder EXIT 1
  EXPECTED_STDERR ${EXPLAIN_EXPECTED}/encode-headers-set-cookie.err
  STDIN ${CMAKE_CURRENT_BINARY_DIR}/lines-set-cookie.txt
  ARGS encode-headers)
wsptool_case(decode_push_quiet EXIT 0
  EXPECTED ${EXPLAIN_EXPECTED}/decode-push-mms-v1.1.out
  EXPECTED_STDERR ${CMAKE_CURRENT_BINARY_DIR}/empty.txt
  ARGS decode-push --quiet -V 1.1 --file ${WSPTOOL_EXAMPLES}/mms-notification.hex)

# --page: a page list handed to the walk.  Page 2 names two codes (one
# written with its Short-integer value, one with an empty text), a code
# it does not name is stepped over, and a shift to page 3, not in the
# list, stops the walk as it stops the library.
wsptool_case(explain_page_list EXIT 1
  EXPECTED ${EXPLAIN_EXPECTED}/explain-page-list.txt
  ARGS explain --page 2:x-foo=0x0d,x-bar=3
       "AF 84  7F 02  8D 85  83 00  78 00 61 00  84 85  01  B4 81  03 8D 85")
# A page given without headers: its codes are all stepped over.
wsptool_case(explain_page_without_headers_json EXIT 0
  EXPECTED ${EXPLAIN_EXPECTED}/explain-page-no-rows.json
  ARGS explain --json --page 3 "7F 03 8D 85 01 B4 81")
wsptool_case(explain_page_default_refused EXIT 2
  STDERR_REGEX "^wsptool: --page 1:x=1: the page is not a number from 2 to 255 \\(the form is PAGE or PAGE:NAME=CODE,..., PAGE 2..255, CODE 0..127\\)\n$"
  ARGS explain --page 1:x=1 00)
wsptool_case(explain_page_code_too_high EXIT 2
  STDERR_REGEX "^wsptool: --page 2:x=200: the code of \"x=200\" is not a number from 0 to 127 "
  ARGS explain --page 2:x=200 00)
wsptool_case(explain_page_row_without_code EXIT 2
  STDERR_REGEX "^wsptool: --page 2:x: \"x\" is not NAME=CODE "
  ARGS explain --page 2:x 00)
wsptool_case(explain_page_twice EXIT 2
  STDERR_REGEX "^wsptool: --page 2: page 2 is given twice "
  ARGS explain --page 2:x=1 --page 2 00)
