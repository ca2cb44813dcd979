# encode-headers, encode-content-type and encode-push.
file(WRITE ${WSPTOOL_SCRATCH}/content-type-line.txt "Content-Type: text/plain\n")
file(WRITE ${WSPTOOL_SCRATCH}/push-headers.txt "X-Wap-Application-Id: x-wap-application:wml.ua")
file(WRITE ${WSPTOOL_SCRATCH}/body.txt "hello")

wsptool_case(encode_content_type EXIT 0
  STDOUT_REGEX "^03 83 81 EA\n$"
  ARGS encode-content-type "Text/Plain; charset=UTF-8" --wsp-version 1.3)
wsptool_case(encode_content_type_version EXIT 0
  STDOUT_REGEX "^61 70 70 6C 69 63 61 74 69 6F 6E 2F 76 6E 64 2E\n77 61 70 2E 73 69 61 00\n$"
  ARGS encode-content-type application/vnd.wap.sia -V 1.1)
wsptool_case(encode_headers_failure EXIT 1
  STDERR_REGEX "wsp_enc_hdr failed: WSP_ERR_FAIL \\(-214\\): "
  STDIN ${WSPTOOL_SCRATCH}/content-type-line.txt
  ARGS encode-headers)
wsptool_case(encode_headers_dash EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/request-headers.expected
  STDIN ${WSPTOOL_EXAMPLES}/request-headers.txt
  ARGS encode-headers --file -)

wsptool_case(encode_push EXIT 0
  STDOUT_REGEX "^06 03 AE AF 82 68 65 6C 6C 6F\n$"
  ARGS encode-push -c application/vnd.wap.sic -H "X-Wap-Application-Id: x-wap-application:wml.ua"
       --body ${WSPTOOL_SCRATCH}/body.txt)
wsptool_case(encode_push_tid_confirmed EXIT 0
  STDOUT_REGEX "^2A 07 01 83 FF\n$"
  ARGS encode-push --content-type text/plain --tid 42 --confirmed --body-hex FF)
wsptool_case(encode_push_headers_file EXIT 0
  STDOUT_REGEX "^06 05 AE AF 82 B4 81\n$"
  ARGS encode-push -c application/vnd.wap.sic --headers-file ${WSPTOOL_SCRATCH}/push-headers.txt
       -H "Push-Flag: 1")
# What encode-push makes, decode-push reads back.
wsptool_case(encode_push_round_trip EXIT 0
  STDOUT_REGEX "^tid: 0x01\npdu: Push \\(0x06\\)\ncontent-type: application/vnd.wap.sic\nheaders: 2 octets\n  x-wap-application-id:x-wap-application:wml.ua\nbody: 43 octets \\(WBXML, shown as XML\\)\n"
  ARGS encode-push -c application/vnd.wap.sic --tid 1 -H "X-Wap-Application-Id: x-wap-application:wml.ua"
       --body-hex "02 05 6A 00 45 C6 0C 03 65 78 61 6D 70 6C 65 2E 63 6F 6D 2F 6E 65 77 73 00 01 03 42 72 65 61 6B 69 6E 67 20 6E 65 77 73 00 01 01"
  PIPE_TO decode-push)
wsptool_case(encode_push_raw_out EXIT 0
  STDOUT_REGEX "^pdu: Push \\(0x06\\)\ncontent-type: text/plain\nheaders: 0 octets\nbody: 5 octets\n  68 65 6C 6C 6F\n$"
  ARGS encode-push -c text/plain --body ${WSPTOOL_SCRATCH}/body.txt --raw-out
  PIPE_TO decode-push --raw)
wsptool_case(encode_push_bad_type EXIT 1
  STDERR_REGEX "^wsptool: wsp_encode_content failed: WSP_ERR_FAIL \\(-214\\): "
  ARGS encode-push -c "text/plain; q=2")
wsptool_case(encode_push_needs_type EXIT 2
  STDERR_REGEX "^wsptool: --content-type is required"
  ARGS encode-push --body-hex FF)
wsptool_case(encode_push_two_bodies EXIT 2
  ARGS encode-push -c text/plain --body-hex FF --body ${WSPTOOL_SCRATCH}/body.txt)
wsptool_case(encode_push_bad_tid EXIT 2
  ARGS encode-push -c text/plain --tid 256)

# encode-push names the header line that made the encoder fail: the lines
# of --headers-file by their number in the file, then the --header lines.
wsptool_case(encode_push_failing_header_option EXIT 1
  EXPECTED_STDERR ${CMAKE_CURRENT_SOURCE_DIR}/tests/expected/encode-push-set-cookie.err
  ARGS encode-push -c text/plain -H "Push-Flag: 1" -H "Set-Cookie: a=b")
file(WRITE ${WSPTOOL_SCRATCH}/push-headers-content-type.txt "Push-Flag: 1\nContent-Type: text/plain\n")
wsptool_case(encode_push_failing_file_line EXIT 1
  STDERR_REGEX "^wsptool: wsp_enc_hdr failed: WSP_ERR_FAIL \\(-214\\): [^\n]+\nwsptool: line 2 of [^\n]*/push-headers-content-type.txt \"Content-Type: text/plain\": WSP_ERR_FAIL \\(-214\\): content-type travels outside the header block and cannot be encoded in it\n$"
  ARGS encode-push -c text/plain --headers-file ${WSPTOOL_SCRATCH}/push-headers-content-type.txt -H "Age: 5")
