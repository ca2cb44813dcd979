# decode-headers and decode-content-type: layouts, JSON, versions, failures.
wsptool_case(headers_args EXIT 0
  STDOUT_REGEX "^x-foo:a,b\n$"
  ARGS decode-headers 78 2d 46 6f 6f 00 61 00 "782D466F6F00 6200")
wsptool_case(headers_hex_out EXIT 0
  STDOUT_REGEX "^78 2D 66 6F 6F 3A 61 0A\n$"
  ARGS decode-headers --hex 782D466F6F006100)
wsptool_case(headers_raw_value EXIT 0
  STDOUT_REGEX "^x-foo:\\\\x85\n$"
  ARGS decode-headers 782D466F6F0085)
wsptool_case(headers_json EXIT 0
  STDOUT_REGEX "^\\{\"octets\":4,\"lines\":\\[\\{\"name\":\"x-wap-application-id\",\"value\":\"x-wap-application:mms.ua\"\\},\\{\"name\":\"push-flag\",\"value\":\"0\"\\}\\]\\}\n$"
  ARGS decode-headers --json AF 84 B4 80)
wsptool_case(headers_json_escapes EXIT 0
  STDOUT_REGEX "^\\{\"octets\":7,\"lines\":\\[\\{\"name\":\"x-foo\",\"value\":\"\\\\\\\\x85\"\\}\\]\\}\n$"
  ARGS decode-headers --json 782D466F6F0085)
wsptool_case(headers_json_empty EXIT 0
  STDOUT_REGEX "^\\{\"octets\":0,\"lines\":\\[\\]\\}\n$"
  ARGS decode-headers --json)
wsptool_case(raw_out_to_raw_input EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/request-headers.decoded.expected
  STDIN ${WSPTOOL_EXAMPLES}/request-headers.txt
  ARGS encode-headers --raw-out
  PIPE_TO decode-headers --raw)
wsptool_case(headers_version_limit EXIT 0
  STDOUT_REGEX "^$"
  ARGS decode-headers --wsp-version 1.1 AF84)
wsptool_case(headers_escapes EXIT 0
  STDOUT_REGEX "^x:a\\\\\\\\b\n$"
  ARGS decode-headers "78 00 61 5C 62 00")
wsptool_case(headers_empty_input EXIT 0
  STDOUT_REGEX "^$"
  ARGS decode-headers)
wsptool_case(headers_comments EXIT 0
  STDOUT_REGEX "^push-flag:1\n$"
  ARGS decode-headers "B4 # Push-Flag\n81 # one")
wsptool_case(headers_date_in_utc EXIT 0
  STDOUT_REGEX "^date:Thu, 01 Jan 1970 00:00:00 GMT\n$"
  ARGS decode-headers 92 01 00)
wsptool_case(headers_date_tz EXIT 0
  STDOUT_REGEX "^date:Thu, 01 Jan 1970 01:00:00 GMT\n$"
  ARGS --tz Europe/Berlin decode-headers 92 01 00)
wsptool_case(headers_shift_failure EXIT 1
  STDERR_REGEX "^wsptool: wsp_dec_hdr failed: WSP_ERR_ARG \\(-211\\): a value of a form the decoder does not accept, or a code-page shift it cannot follow\nwsptool: decoding stopped at offset 0, in the shift: octet 0x00 cannot start an entry\n$"
  ARGS decode-headers 00)
string(REPEAT "00" 65536 too_many)
file(WRITE ${WSPTOOL_SCRATCH}/too-long.hex "${too_many}")
wsptool_case(headers_too_long EXIT 2
  STDERR_REGEX "^wsptool: the header block has 65536 octets; the library handles at most 65535\n$"
  ARGS decode-headers --file ${WSPTOOL_SCRATCH}/too-long.hex)
wsptool_case(push_too_long EXIT 2
  STDERR_REGEX "^wsptool: the PDU has 65536 octets; the library handles at most 65535\n$"
  ARGS decode-push --file ${WSPTOOL_SCRATCH}/too-long.hex)

wsptool_case(content_type_short EXIT 0
  STDOUT_REGEX "^text/plain\n$"
  ARGS decode-content-type 83)
wsptool_case(content_type_params EXIT 0
  STDOUT_REGEX "^text/plain;charset=utf-8\n$"
  ARGS decode-content-type 03 83 81 EA)
wsptool_case(content_type_json EXIT 0
  STDOUT_REGEX "^\\{\"content_type\":\"text/plain;charset=utf-8\",\"octets\":4,\"unread\":1\\}\n$"
  ARGS decode-content-type --json 03 83 81 EA 00)
wsptool_case(content_type_trailing EXIT 0
  STDOUT_REGEX "^text/plain\n$"
  STDERR_REGEX "^wsptool: note: 1 octet after the value not read\n$"
  ARGS decode-content-type 83 00)
wsptool_case(content_type_untouched EXIT 0
  STDOUT_REGEX "^\n$"
  ARGS decode-content-type C0)
wsptool_case(content_type_failure EXIT 1
  STDERR_REGEX "^wsptool: wsp_decode_content failed: WSP_ERR_FAIL \\(-214\\): malformed or over-long value, no room in the output, or a lookup miss\n$"
  ARGS decode-content-type FF)
wsptool_case(content_type_empty EXIT 2
  STDERR_REGEX "^wsptool: the content-type value is empty\n$"
  ARGS decode-content-type)
