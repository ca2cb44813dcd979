# Captures: made by wsptool_make_capture (pcap and pcapng, the same packets;
# see its opening comment), read with --pcap.
add_executable(wsptool_make_capture ${CMAKE_CURRENT_SOURCE_DIR}/tests/make_capture.cpp)
set(capture_dir ${WSPTOOL_SCRATCH})
add_test(NAME wsptool_make_captures
  COMMAND ${CMAKE_COMMAND} -E chdir ${capture_dir} sh -c
    "$<TARGET_FILE:wsptool_make_capture> pcap push.pcap && $<TARGET_FILE:wsptool_make_capture> pcapng push.pcapng && $<TARGET_FILE:wsptool_make_capture> pcapng bad.pcapng bad")
set_tests_properties(wsptool_make_captures PROPERTIES FIXTURES_SETUP wsptool_captures)

set(si_report "tid: 0x01\npdu: Push \\(0x06\\)\ncontent-type: application/vnd.wap.sic\nheaders: 2 octets\n  x-wap-application-id:x-wap-application:wml.ua\nbody: 43 octets \\(WBXML, shown as XML\\)\n  <\\?xml version=\"1.0\"\\?>\n  <!DOCTYPE si [^\n]*\n  <si>\n    <indication href=\"http://example.com/news\">Breaking news</indication>\n  </si>\n")
set(reply_report "tid: 0x02\npdu: Reply \\(0x04\\)\nstatus: 0x20 \\(200 OK\\)\ncontent-type: text/plain\nheaders: 2 octets\n  content-length:2\nbody: 2 octets\n  6F 6B\n")
set(mms_report "tid: 0x03\npdu: Push \\(0x06\\)\ncontent-type: application/vnd.wap.mms-message\nheaders: 2 octets\n  x-wap-application-id:x-wap-application:mms.ua\nbody: 6 octets\n  8C 82 98 54 31 00\n")
set(packet1 "packet 1, 2023-11-14 22:13:21.250000 UTC, 192.0.2.1:1024 -> 192.0.2.2:2948\n")
set(packet3 "packet 3, 2023-11-14 22:13:23.250000 UTC, \\[2001:db8::1\\]:9200 -> \\[2001:db8::2\\]:1026\n")
set(packet4 "packet 4, 2023-11-14 22:13:24.250000 UTC, 192.0.2.1:1027 -> 192.0.2.2:9999\n")

wsptool_case(capture_pcap EXIT 0 FIXTURE wsptool_captures
  STDOUT_REGEX "^${packet1}${si_report}\n${packet3}${reply_report}$"
  ARGS decode-pdu --pcap ${capture_dir}/push.pcap)
wsptool_case(capture_pcapng EXIT 0 FIXTURE wsptool_captures
  STDOUT_REGEX "^${packet1}${si_report}\n${packet3}${reply_report}$"
  ARGS decode-pdu --pcap ${capture_dir}/push.pcapng)
wsptool_case(capture_extra_port EXIT 0 FIXTURE wsptool_captures
  STDOUT_REGEX "^${packet1}${si_report}\n${packet3}${reply_report}\n${packet4}${mms_report}$"
  ARGS decode-pdu --pcap ${capture_dir}/push.pcapng --port 9999)
wsptool_case(capture_push_only EXIT 0 FIXTURE wsptool_captures
  STDOUT_REGEX "^${packet1}${si_report}\n${packet4}${mms_report}$"
  STDERR_REGEX "^wsptool: note: packet 3 is a Reply \\(0x04\\) PDU, passed over \\(decode-pdu decodes it\\)\n$"
  ARGS decode-push --pcap ${capture_dir}/push.pcap --port 9999)
wsptool_case(capture_time_zone EXIT 0 FIXTURE wsptool_captures
  STDOUT_REGEX "^packet 1, 2023-11-14 23:13:21.250000 CET, "
  ARGS --tz Europe/Berlin decode-push --pcap ${capture_dir}/push.pcap)
wsptool_case(capture_json EXIT 0 FIXTURE wsptool_captures
  STDOUT_REGEX "^\\{\"packet\":1,\"time\":\"2023-11-14 22:13:21.250000 UTC\",\"source\":\"192.0.2.1:1024\",\"destination\":\"192.0.2.2:2948\",\"tid\":1,\"pdu\":\"Push\",[^\n]*\n\\{\"packet\":3,[^\n]*\"pdu\":\"Reply\",\"type\":4,\"status\":\"0x20 \\(200 OK\\)\",[^\n]*\n$"
  ARGS decode-pdu --json --pcap ${capture_dir}/push.pcap)
# The failures of bad.pcapng (packets 6 and 7) are compared whole, text and
# JSON, in failure_report_cases.cmake.
wsptool_case(capture_not_a_capture EXIT 2
  STDERR_REGEX "^wsptool: cannot read the capture [^\n]*mms-notification.hex: "
  ARGS decode-pdu --pcap ${WSPTOOL_EXAMPLES}/mms-notification.hex)
wsptool_case(capture_other_port_asked_for EXIT 1 FIXTURE wsptool_captures
  STDERR_REGEX "wsptool: packet 2: the PDU type is unassigned \\(0x12\\); decoded are "
  ARGS decode-pdu --pcap ${capture_dir}/push.pcap --port 53 --no-tid)
wsptool_case(capture_with_hex EXIT 2
  ARGS decode-pdu --pcap ${WSPTOOL_EXAMPLES}/push-capture.pcap 06 00)
wsptool_case(capture_port_needs_pcap EXIT 2
  STDERR_REGEX "^wsptool: --port requires --pcap"
  ARGS decode-pdu --port 9999 06 00)
