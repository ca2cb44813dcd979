# What the decode commands print when decoding stops: with --json, one
# object that keeps what was decoded before the failure and adds "failure"
# (error, status, stop offset, detail); in text, the fields read before it.
# Included from tools/CMakeLists.txt inside its testing block.
set(FAILURE_EXPECTED ${CMAKE_CURRENT_SOURCE_DIR}/tests/expected)

# The library refuses a header block: the lines before it, the status and
# the offset of the shift that stopped it.
wsptool_case(decode_headers_failure_json EXIT 1
  EXPECTED ${FAILURE_EXPECTED}/decode-headers-failure.json
  EXPECTED_STDERR ${FAILURE_EXPECTED}/decode-headers-failure.err
  ARGS decode-headers --json "B4 81  78 00 61 00  78 00 62 00  7F")
wsptool_case(decode_push_failure_json EXIT 1
  EXPECTED ${FAILURE_EXPECTED}/decode-push-failure.json
  EXPECTED_STDERR ${FAILURE_EXPECTED}/decode-push-failure.err
  ARGS decode-push --json "06 07 83 B4 81 78 00 61 22 FF")

# The push decoder refuses the PDU (HeadersLen runs past the end): the
# type read before it, decoding stopped at the content type.
wsptool_case(decode_push_short_json EXIT 1
  EXPECTED ${FAILURE_EXPECTED}/decode-push-short.json
  EXPECTED_STDERR ${FAILURE_EXPECTED}/decode-push-short.err
  ARGS decode-push --json 06 09 83)
wsptool_case(decode_push_short_text EXIT 1
  EXPECTED ${FAILURE_EXPECTED}/decode-push-short.out
  EXPECTED_STDERR ${FAILURE_EXPECTED}/decode-push-short.err
  ARGS decode-push 06 09 83)

# wsptool's own findings carry no library status.
wsptool_case(decode_pdu_length_past_end_json EXIT 1
  EXPECTED ${FAILURE_EXPECTED}/decode-pdu-length-past-end.json
  ARGS decode-pdu --json --no-tid 04 20 09 83)
wsptool_case(decode_pdu_no_type_json EXIT 1
  EXPECTED ${FAILURE_EXPECTED}/decode-pdu-no-type.json
  ARGS decode-pdu --json F0 F1)
wsptool_case(decode_content_type_failure_json EXIT 1
  EXPECTED ${FAILURE_EXPECTED}/decode-content-type-failure.json
  STDERR_REGEX "^wsptool: wsp_decode_content failed: WSP_ERR_FAIL \\(-214\\): "
  ARGS decode-content-type --json FF)

# Captures: notes and failures name their packet, offsets count from the
# start of its datagram; text and JSON alike.  Packet 6 is refused by the
# push decoder, packet 7 has a header stepped over and a refused shift.
wsptool_case(capture_failures_text EXIT 1 FIXTURE wsptool_captures
  EXPECTED ${FAILURE_EXPECTED}/capture-bad.out
  EXPECTED_STDERR ${FAILURE_EXPECTED}/capture-bad.err
  ARGS decode-pdu --pcap ${WSPTOOL_SCRATCH}/bad.pcapng)
wsptool_case(capture_failures_json EXIT 1 FIXTURE wsptool_captures
  EXPECTED ${FAILURE_EXPECTED}/capture-bad.json
  EXPECTED_STDERR ${FAILURE_EXPECTED}/capture-bad.err
  ARGS decode-pdu --json --pcap ${WSPTOOL_SCRATCH}/bad.pcapng)
wsptool_case(capture_failures_quiet EXIT 1 FIXTURE wsptool_captures
  STDERR_REGEX "^wsptool: packet 6: [^\n]*\nwsptool: packet 6: decoding stopped at offset 3\nwsptool: packet 7: wsp_dec_hdr failed: [^\n]*\nwsptool: packet 7: decoding stopped at offset 8, in the shift: [^\n]*\n$"
  ARGS decode-pdu --quiet --pcap ${WSPTOOL_SCRATCH}/bad.pcapng)
