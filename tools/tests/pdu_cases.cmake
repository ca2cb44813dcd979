# decode-push and decode-pdu: the PDU type checked, the transaction id
# detected or forced, every decoded PDU type, the layouts and the failures.

# Push: transaction id and header text in hex.
wsptool_case(push_tid_and_hex EXIT 0
  STDOUT_REGEX "^tid: 0x01\npdu: Push \\(0x06\\)\ncontent-type: text/plain\nheaders: 4 octets\n  78 3A 61 0A\nbody: 1 octet\n  FF\n$"
  ARGS decode-push --tid --hex "01 06 05 83 78 00 61 00 FF")
wsptool_case(push_tid_detected EXIT 0
  STDOUT_REGEX "^tid: 0x01\npdu: Push \\(0x06\\)\ncontent-type: text/plain\nheaders: 4 octets\n  x:a\nbody: 1 octet\n  FF\n$"
  ARGS decode-push "01 06 05 83 78 00 61 00 FF")
wsptool_case(push_confirmed EXIT 0
  STDOUT_REGEX "^pdu: ConfirmedPush \\(0x07\\)\ncontent-type: text/plain\nheaders: 0 octets\nbody: 0 octets\n$"
  ARGS decode-push 07 01 83)
# 07 06 ...: a ConfirmedPush with HeadersLen 6, or tid 7 and a Push: both
# decode, the one that finds a content type wins.
wsptool_case(push_tid_ambiguous EXIT 0
  STDOUT_REGEX "^tid: 0x07\npdu: Push \\(0x06\\)\ncontent-type: application/vnd.wap.sic\n"
  ARGS decode-push "07 06 03 AE AF 82 02 05 6A 00")
wsptool_case(push_no_tid_forced EXIT 1
  STDERR_REGEX "^wsptool: the PDU type is Connect \\(0x01\\), not Push \\(0x06\\) or ConfirmedPush \\(0x07\\); decode-pdu decodes the other types\n$"
  ARGS decode-push --no-tid "01 06 05 83 78 00 61 00 FF")
wsptool_case(push_empty_result EXIT 0
  STDOUT_REGEX "^pdu: Push \\(0x06\\)\ncontent-type:\nheaders: 0 octets\nbody: 0 octets\n$"
  ARGS decode-push 06 00)
wsptool_case(push_no_data EXIT 0
  STDOUT_REGEX "^pdu: Push \\(0x06\\)\ncontent-type: text/plain\nheaders: 2 octets\n  content-length:5\nbody: 0 octets\n$"
  ARGS decode-push 06 03 83 8D 85)
wsptool_case(push_wrong_type EXIT 1
  STDERR_REGEX "^wsptool: neither the first octet \\(0x04\\) nor the second \\(0x20\\) is a push PDU type; give --tid or --no-tid to say where it is\n$"
  ARGS decode-push --file ${WSPTOOL_EXAMPLES}/reply.hex)
wsptool_case(push_reply_forced EXIT 1
  STDERR_REGEX "^wsptool: the PDU type is Reply \\(0x04\\), not Push \\(0x06\\) or ConfirmedPush \\(0x07\\); decode-pdu decodes the other types\n$"
  ARGS decode-push --no-tid --file ${WSPTOOL_EXAMPLES}/reply.hex)
wsptool_case(push_tid_only EXIT 2
  STDERR_REGEX "^wsptool: the PDU is empty after its transaction id\n$"
  ARGS decode-push --tid 01)
wsptool_case(push_empty EXIT 2
  STDERR_REGEX "^wsptool: the PDU is empty\n$"
  ARGS decode-push)
wsptool_case(push_header_failure EXIT 1
  STDERR_REGEX "^wsptool: wsp_dec_hdr failed: WSP_ERR_ARG \\(-211\\): "
  ARGS decode-push 06 02 83 00)
wsptool_case(push_json_tid EXIT 0
  STDOUT_REGEX "^\\{\"tid\":1,\"pdu\":\"Push\",\"type\":6,\"content_type\":\"text/plain\",\"headers\":\\{\"octets\":4,\"lines\":\\[\\{\"name\":\"x\",\"value\":\"a\"\\}\\]\\},\"body\":\\{\"octets\":1,\"hex\":\"FF\"\\}\\}\n$"
  ARGS decode-push --json "01 06 05 83 78 00 61 00 FF")
wsptool_case(push_json_wbxml EXIT 0
  STDOUT_REGEX "\"body\":\\{\"octets\":43,\"hex\":\"02056A00[0-9A-F]+\",\"xml\":\"<\\?xml version=\\\\\"1.0\\\\\"\\?>\\\\n<!DOCTYPE si [^\n]*</si>\\\\n\"\\}\\}\n$"
  ARGS decode-push --json --file ${WSPTOOL_EXAMPLES}/service-indication.hex)
wsptool_case(push_json_raw_body EXIT 0
  STDOUT_REGEX "\"body\":\\{\"octets\":43,\"hex\":\"02056A00[0-9A-F]+\"\\}\\}\n$"
  ARGS decode-push --json --raw-body --file ${WSPTOOL_EXAMPLES}/service-indication.hex)
wsptool_case(push_wbxml_unreadable EXIT 0
  STDOUT_REGEX "body: 4 octets \\(WBXML that libwbxml2 cannot read: [^\n]+\\)\n  02 05 6A 00\n$"
  ARGS decode-push "06 01 AE 02 05 6A 00")
wsptool_case(push_wbxml_unreadable_json EXIT 0
  STDOUT_REGEX "\"body\":\\{\"octets\":4,\"hex\":\"02056A00\",\"wbxml_error\":\"[^\"]+\"\\}\\}\n$"
  ARGS decode-push --json "06 01 AE 02 05 6A 00")

# decode-pdu: each type.
wsptool_case(pdu_get EXIT 0
  STDOUT_REGEX "^pdu: Get \\(0x40\\)\nuri: http://a/bc\nheaders: 2 octets\n  push-flag:1\n$"
  ARGS decode-pdu 40 0B 68 74 74 70 3A 2F 2F 61 2F 62 63 B4 81)
wsptool_case(pdu_head_no_headers EXIT 0
  STDOUT_REGEX "^pdu: Head \\(0x42\\)\nuri: /\nheaders: 0 octets\n$"
  ARGS decode-pdu 42 01 2F)
wsptool_case(pdu_post EXIT 0
  STDOUT_REGEX "^pdu: Post \\(0x60\\)\nuri: http://a\ncontent-type: text/plain\nheaders: 2 octets\n  content-length:5\nbody: 5 octets\n  68 65 6C 6C 6F\n$"
  ARGS decode-pdu 60 08 03 68 74 74 70 3A 2F 2F 61 83 8D 85 68 65 6C 6C 6F)
wsptool_case(pdu_put_json EXIT 0
  STDOUT_REGEX "^\\{\"tid\":null,\"pdu\":\"Put\",\"type\":97,\"uri\":\"/x\",\"content_type\":\"text/plain\",\"headers\":\\{\"octets\":0,\"lines\":\\[\\]\\},\"body\":\\{\"octets\":1,\"hex\":\"41\"\\}\\}\n$"
  ARGS decode-pdu --json 61 02 01 2F 78 83 41)
wsptool_case(pdu_disconnect EXIT 0
  STDOUT_REGEX "^pdu: Disconnect \\(0x05\\)\nserver-session-id: 641\n$"
  ARGS decode-pdu 05 85 01)
wsptool_case(pdu_disconnect_tid EXIT 0
  STDOUT_REGEX "^tid: 0x12\npdu: Disconnect \\(0x05\\)\nserver-session-id: 7\n$"
  ARGS decode-pdu 12 05 07)
wsptool_case(pdu_suspend EXIT 0
  STDOUT_REGEX "^pdu: Suspend \\(0x08\\)\nsession-id: 9\n$"
  ARGS decode-pdu --no-tid 08 09)
wsptool_case(pdu_reply_unassigned_status EXIT 0
  STDOUT_REGEX "^pdu: Reply \\(0x04\\)\nstatus: 0x7E \\(unassigned\\)\ncontent-type: text/plain\nheaders: 0 octets\nbody: 0 octets\n$"
  ARGS decode-pdu 04 7E 01 83)
wsptool_case(pdu_redirect_refused EXIT 1
  STDERR_REGEX "^wsptool: the PDU type is Redirect \\(0x03\\); decoded are Connect, "
  ARGS decode-pdu --no-tid 03 80 00)
wsptool_case(pdu_unassigned EXIT 1
  STDERR_REGEX "^wsptool: neither the first octet \\(0xF0\\) nor the second \\(0xF1\\) is a PDU type; give --tid or --no-tid to say where it is\n$"
  ARGS decode-pdu F0 F1)
wsptool_case(pdu_trailing_octets EXIT 1
  STDERR_REGEX "^wsptool: 1 octet after the end of the PDU\n$"
  ARGS decode-pdu --no-tid 05 07 00)
wsptool_case(pdu_length_past_end EXIT 1
  STDERR_REGEX "^wsptool: the headers length claims 9 octets; 1 are left\n$"
  ARGS decode-pdu --no-tid 04 20 09 83)
wsptool_case(pdu_bad_uintvar EXIT 1
  STDERR_REGEX "^wsptool: the server session id is not a valid uintvar: wsp_dec_varint failed: WSP_ERR_FAIL \\(-214\\)"
  ARGS decode-pdu --no-tid 05 80 01)
wsptool_case(pdu_ends_early EXIT 1
  STDERR_REGEX "^wsptool: the PDU ends before its URI length\n$"
  ARGS decode-pdu --no-tid 40)

# Capabilities (Connect, ConnectReply, Resume): one line per capability,
# its identifier named and its value decoded (examples/connect.hex has one
# of each assigned kind).  A ConnectReply's lists hold codes alone;
# unassigned numbers and Token-text identifiers keep their octets in hex.
wsptool_case(pdu_connect_reply_capabilities EXIT 0
  STDOUT_REGEX "^pdu: ConnectReply \\(0x02\\)\nserver-session-id: 5\ncapabilities: 17 octets\n  Extended Methods \\(0x05\\): 0x50, 0x70\n  Header Code Pages \\(0x06\\): 0x02\n  capability \\(0x0A\\): 01 02\n  x-p: 01\nheaders: 2 octets\n  push-flag:0\n$"
  ARGS decode-pdu 02 05 11 02  03 85 50 70  02 86 02  03 8A 01 02  05 78 2D 70 00 01  B4 80)
wsptool_case(pdu_resume_capabilities EXIT 0
  STDOUT_REGEX "^pdu: Resume \\(0x09\\)\nsession-id: 7\ncapabilities: 3 octets\n  Method-MOR \\(0x03\\): 2\nheaders: 2 octets\n  push-flag:0\n$"
  ARGS decode-pdu 09 07 03 02 83 02 B4 80)
# Values not of their identifier's form stay hex; octets that do not form
# a capability are shown from where they start.
wsptool_case(pdu_capabilities_malformed EXIT 0
  STDOUT_REGEX "^pdu: Connect \\(0x01\\)\nversion: 1.0\ncapabilities: 8 octets\n  Protocol Options \\(0x02\\): 0x1F: acknowledgement headers, large data transfer, unassigned bits 0x07\n  Client-SDU-Size \\(0x00\\): 80 \\(not of its form\\)\n  octet 6 on: the capability length claims 2 octets; 1 are left: 02 80\nheaders: 0 octets\n$"
  ARGS decode-pdu --no-tid 01 10 08 00  02 82 1F  02 80 80  02 80)
wsptool_case(pdu_capability_length_not_uintvar EXIT 0
  STDOUT_REGEX "\ncapabilities: 1 octet\n  octet 0 on: the capability length is not a valid uintvar: C0\nheaders: 2 octets\n"
  ARGS decode-pdu 02 05 01 02 C0 B4 80)
wsptool_case(pdu_capabilities_hex EXIT 0
  STDOUT_REGEX "^pdu: Connect \\(0x01\\)\nversion: 1.0\ncapabilities: 52 octets\n  03 80 97 38 03 81 8A 78 02 82 E0 02 83 01 02 84\n  01 0B 85 50 50 52 4F 50 46 49 4E 44 00 0C 86 02\n  78 2D 65 78 61 6D 70 6C 65 00 09 87 C4 00 23 F1\n  C0 00 02 09\nheaders: 15 octets\n  75 73 65 72"
  ARGS decode-pdu --hex --file ${WSPTOOL_EXAMPLES}/connect.hex)
wsptool_case(pdu_capabilities_aliases EXIT 0
  STDOUT_REGEX "\n  Aliases \\(0x07\\): bearer 0x0A, 192.0.2.1; port 2948, address 01 02\n"
  ARGS decode-pdu --no-tid 01 10 0D 00  0C 87  84 0A C0 00 02 01  42 0B 84 01 02)
