# The forms in which octets reach the decode commands: the DRM rights push
# PDU (21 octets) pasted as analysers, xxd, hexdump -C and C sources print
# it; each must decode exactly as the bundled example does.
set(drm_expected ${WSPTOOL_EXAMPLES}/drm-rights.expected)

file(WRITE ${WSPTOOL_SCRATCH}/drm-analyser.txt
"0000  06 05 cb af 88 8d 8e 03 0e 6a 00 c5 05 85 06 86   .........j......
0010  07 87 01 01 01                                    .....
")
file(WRITE ${WSPTOOL_SCRATCH}/drm-analyser-split.txt
"0000   06 05 cb af 88 8d 8e 03  0e 6a 00 c5 05 85 06 86   .........j......
0010   07 87 01 01 01                                     .....
")
file(WRITE ${WSPTOOL_SCRATCH}/drm-xxd.txt
"00000000: 0605 cbaf 888d 8e03 0e6a 00c5 0585 0686  .........j......
00000010: 0787 0101 01                             .....
")
file(WRITE ${WSPTOOL_SCRATCH}/drm-hexdump.txt
"00000000  06 05 cb af 88 8d 8e 03  0e 6a 00 c5 05 85 06 86  |.........j......|
00000010  07 87 01 01 01                                    |.....|
00000015
")
file(WRITE ${WSPTOOL_SCRATCH}/drm-c-array.txt
"  0x06, 0x05, 0xcb, 0xaf, 0x88, 0x8d, 0x8e, 0x03, 0x0e, 0x6a, 0x00, 0xc5,
  0x05, 0x85, 0x06, 0x86, 0x07, 0x87, 0x01, 0x01, 0x01
")
file(WRITE ${WSPTOOL_SCRATCH}/drm-bad-offset.txt
"0000  06 05 cb af 88 8d 8e 03 0e 6a 00 c5 05 85 06 86   .........j......
0020  07 87 01 01 01                                    .....
")
file(WRITE ${WSPTOOL_SCRATCH}/drm-missing-offset.txt
"0000  06 05 cb af 88 8d 8e 03 0e 6a 00 c5 05 85 06 86
07 87 01 01 01
")
# The character column can look like hex ("ab" for the octets 61 62): as a
# single word exactly as long as the octets, it is left out (else the next
# offset would not follow).
file(WRITE ${WSPTOOL_SCRATCH}/hex-looking-characters.txt "0000  61 62  ab\n0002  00  .\n")

wsptool_case(input_analyser_dump EXIT 0 EXPECTED ${drm_expected}
  ARGS decode-push --file ${WSPTOOL_SCRATCH}/drm-analyser.txt)
wsptool_case(input_analyser_dump_split EXIT 0 EXPECTED ${drm_expected}
  ARGS decode-push --file ${WSPTOOL_SCRATCH}/drm-analyser-split.txt)
wsptool_case(input_xxd EXIT 0 EXPECTED ${drm_expected}
  ARGS decode-push --file ${WSPTOOL_SCRATCH}/drm-xxd.txt)
wsptool_case(input_hexdump_c EXIT 0 EXPECTED ${drm_expected}
  STDIN ${WSPTOOL_SCRATCH}/drm-hexdump.txt
  ARGS decode-push)
wsptool_case(input_c_array EXIT 0 EXPECTED ${drm_expected}
  ARGS decode-push --file ${WSPTOOL_SCRATCH}/drm-c-array.txt)
wsptool_case(input_colons EXIT 0 EXPECTED ${drm_expected}
  ARGS decode-push "06:05:cb:af:88:8d:8e:03:0e:6a:00:c5:05:85:06:86:07:87:01:01:01")
wsptool_case(input_backslash_x EXIT 0 EXPECTED ${drm_expected}
  ARGS decode-push "\\x06\\x05\\xcb\\xaf\\x88\\x8d\\x8e\\x03\\x0e\\x6a\\x00\\xc5\\x05\\x85\\x06\\x86\\x07\\x87\\x01\\x01\\x01")
wsptool_case(input_dash_argument EXIT 0 EXPECTED ${drm_expected}
  STDIN ${WSPTOOL_SCRATCH}/drm-xxd.txt
  ARGS decode-push -)
wsptool_case(input_dash_file EXIT 0 EXPECTED ${drm_expected}
  STDIN ${WSPTOOL_SCRATCH}/drm-analyser.txt
  ARGS decode-push --file -)
wsptool_case(input_single_digit_fields EXIT 0
  STDOUT_REGEX "^text/plain;charset=utf-8\n$"
  ARGS decode-content-type "0x3, 0x83, 0x81, 0xea")
wsptool_case(input_hex_looking_characters EXIT 0
  STDOUT_REGEX "^ab\n$"
  ARGS decode-content-type --file ${WSPTOOL_SCRATCH}/hex-looking-characters.txt)
wsptool_case(input_bad_offset EXIT 2
  STDERR_REGEX "^wsptool: the offset on line 2 does not follow the octets before it \\(expected 0010\\)\n$"
  ARGS decode-push --file ${WSPTOOL_SCRATCH}/drm-bad-offset.txt)
wsptool_case(input_missing_offset EXIT 2
  STDERR_REGEX "^wsptool: line 2 of the dump has no offset column\n$"
  ARGS decode-push --file ${WSPTOOL_SCRATCH}/drm-missing-offset.txt)
wsptool_case(input_odd_before_separator EXIT 2
  STDERR_REGEX "^wsptool: odd number of hex digits before a separator on line 1\n$"
  ARGS decode-headers "8 0 8 , 83")
wsptool_case(input_prefix_without_digits EXIT 2
  STDERR_REGEX "^wsptool: a hex prefix without digits on line 1\n$"
  ARGS decode-headers "\\xg0")
