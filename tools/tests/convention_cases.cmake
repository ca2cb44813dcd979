# Program-wide conventions: --version, --help, usage errors (exit 2, every
# message starting "wsptool:").
wsptool_case(version EXIT 0
  STDOUT_REGEX "^wsptool ${PROJECT_VERSION}\nlibtarnwspencdec [0-9]+\\.[0-9]+\\.[0-9]+\n$"
  ARGS --version)
wsptool_case(usage_no_command EXIT 2
  STDERR_REGEX "^wsptool: no command given; the commands are:\n  decode-push\n"
  ARGS "")
wsptool_case(usage_unknown_command EXIT 2
  STDERR_REGEX "^wsptool: unknown command frobnicate; the commands are:\n  decode-push\n  decode-pdu\n  decode-headers\n  decode-content-type\n  encode-headers\n  encode-content-type\n  encode-push\n"
  ARGS frobnicate)
wsptool_case(usage_old_version_option EXIT 2
  STDERR_REGEX "^wsptool: --version prints the program's version; the WSP encoding version is --wsp-version \\(-V\\)\n$"
  ARGS decode-headers --version 1.1 00)
wsptool_case(usage_bad_version EXIT 2
  STDERR_REGEX "^wsptool: --wsp-version: 1.5 not in"
  ARGS decode-headers --wsp-version 1.5 00)
wsptool_case(usage_unknown_option EXIT 2
  STDERR_REGEX "^wsptool: The following argument was not expected: --frob"
  ARGS decode-headers --frob)
wsptool_case(usage_bad_hex EXIT 2
  STDERR_REGEX "^wsptool: not a hex digit: 'G' on line 1\n$"
  ARGS decode-headers 8G)
wsptool_case(usage_odd_hex EXIT 2
  STDERR_REGEX "^wsptool: odd number of hex digits\n$"
  ARGS decode-headers 831)
wsptool_case(usage_hex_and_file EXIT 2
  STDERR_REGEX "^wsptool: "
  ARGS decode-headers 83 --file ${WSPTOOL_EXAMPLES}/mms-notification.hex)
wsptool_case(usage_tid_and_no_tid EXIT 2
  STDERR_REGEX "^wsptool: --tid excludes --no-tid"
  ARGS decode-push --tid --no-tid 01 06 00)
wsptool_case(usage_missing_file EXIT 2
  STDERR_REGEX "^wsptool: --file: "
  ARGS decode-push --file ${CMAKE_CURRENT_BINARY_DIR}/no-such-file.hex)
wsptool_case(usage_missing_text EXIT 2 STDERR_REGEX "^wsptool: TEXT is required" ARGS encode-content-type)
wsptool_case(usage_hex_and_raw_out EXIT 2 STDERR_REGEX "^wsptool: " ARGS encode-headers --hex --raw-out)

# Help: exit 0, every command listed, every option described.
wsptool_case(help EXIT 0
  STDOUT_REGEX "--version.*--tz.*decode-push.*decode-pdu.*decode-headers.*decode-content-type.*encode-headers.*encode-content-type.*encode-push"
  ARGS --help)
wsptool_case(help_decode_push EXIT 0
  STDOUT_REGEX "--tid.*--no-tid.*--wsp-version.*--hex.*--raw-body.*--json.*--pcap.*--port"
  ARGS decode-push --help)
wsptool_case(help_decode_pdu EXIT 0
  STDOUT_REGEX "Connect.*--tid.*--no-tid.*--wsp-version.*--json.*--pcap"
  ARGS decode-pdu --help)
wsptool_case(help_decode_headers EXIT 0 STDOUT_REGEX "--file.*--raw.*--wsp-version.*--json" ARGS decode-headers --help)
wsptool_case(help_decode_content_type EXIT 0 STDOUT_REGEX "HEX.*--file.*--raw.*--json" ARGS decode-content-type --help)
wsptool_case(help_encode_headers EXIT 0 STDOUT_REGEX "--file.*--wsp-version.*--raw-out" ARGS encode-headers --help)
wsptool_case(help_encode_content_type EXIT 0 STDOUT_REGEX "TEXT.*--wsp-version" ARGS encode-content-type --help)
wsptool_case(help_encode_push EXIT 0
  STDOUT_REGEX "--content-type.*--header.*--headers-file.*--body.*--body-hex.*--tid.*--confirmed.*--wsp-version.*--raw-out"
  ARGS encode-push --help)
