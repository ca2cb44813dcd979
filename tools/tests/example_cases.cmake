# The bundled examples against their expected output (examples/README.md).
wsptool_case(example_mms_notification EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/mms-notification.expected
  ARGS decode-push --file ${WSPTOOL_EXAMPLES}/mms-notification.hex)
wsptool_case(example_mms_notification_json EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/mms-notification.json.expected
  ARGS decode-push --json --file ${WSPTOOL_EXAMPLES}/mms-notification.hex)
wsptool_case(example_drm_rights EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/drm-rights.expected
  ARGS decode-push --file ${WSPTOOL_EXAMPLES}/drm-rights.hex)
wsptool_case(example_provisioning EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/provisioning.expected
  ARGS decode-push --file ${WSPTOOL_EXAMPLES}/provisioning.hex)
wsptool_case(example_service_indication EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/service-indication.expected
  ARGS decode-push --file ${WSPTOOL_EXAMPLES}/service-indication.hex)
wsptool_case(example_service_indication_forced_tid EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/service-indication.expected
  ARGS decode-push --tid --file ${WSPTOOL_EXAMPLES}/service-indication.hex)
wsptool_case(example_service_indication_raw_body EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/service-indication.raw-body.expected
  ARGS decode-push --raw-body --file ${WSPTOOL_EXAMPLES}/service-indication.hex)
wsptool_case(example_service_indication_v1_1 EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/service-indication.v1.1.expected
  ARGS decode-push --wsp-version 1.1 --file ${WSPTOOL_EXAMPLES}/service-indication.hex)
wsptool_case(example_service_indication_v1_1_short EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/service-indication.v1.1.expected
  ARGS decode-push -V 1.1 --file ${WSPTOOL_EXAMPLES}/service-indication.hex)
wsptool_case(example_service_loading EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/service-loading.expected
  ARGS decode-push --file ${WSPTOOL_EXAMPLES}/service-loading.hex)
wsptool_case(example_reply EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/reply.expected
  ARGS decode-pdu --file ${WSPTOOL_EXAMPLES}/reply.hex)
wsptool_case(example_connect EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/connect.expected
  ARGS decode-pdu --file ${WSPTOOL_EXAMPLES}/connect.hex)
wsptool_case(example_connect_json EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/connect.json.expected
  ARGS decode-pdu --json --file ${WSPTOOL_EXAMPLES}/connect.hex)
wsptool_case(example_push_through_decode_pdu EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/mms-notification.expected
  ARGS decode-pdu --file ${WSPTOOL_EXAMPLES}/mms-notification.hex)
wsptool_case(example_request_headers EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/request-headers.expected
  ARGS encode-headers --file ${WSPTOOL_EXAMPLES}/request-headers.txt)
wsptool_case(example_request_headers_stdin EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/request-headers.expected
  STDIN ${WSPTOOL_EXAMPLES}/request-headers.txt
  ARGS encode-headers)
wsptool_case(example_request_headers_decoded EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/request-headers.decoded.expected
  ARGS decode-headers --file ${WSPTOOL_EXAMPLES}/request-headers.expected)
wsptool_case(example_mms_stdin EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/mms-notification.expected
  STDIN ${WSPTOOL_EXAMPLES}/mms-notification.hex
  ARGS decode-push)
wsptool_case(example_capture EXIT 0
  EXPECTED ${WSPTOOL_EXAMPLES}/push-capture.expected
  ARGS decode-pdu --pcap ${WSPTOOL_EXAMPLES}/push-capture.pcap)
