# GetURL2 and GotoFrame2 with every combination of flags.
doaction {
  GetURL2 0x00
  GetURL2 0x01
  GetURL2 0x02
  GetURL2 0x03
  GetURL2 0x40
  GetURL2 0x41
  GetURL2 0x42
  GetURL2 0x43
  GetURL2 0x80
  GetURL2 0x81
  GetURL2 0x82
  GetURL2 0x83
  GetURL2 0xc0
  GetURL2 0xc1
  GetURL2 0xc2
  GetURL2 0xc3
  GetURL2 0x04
  GetURL2 0x20
  GetURL2 0x7c
  GotoFrame2 0
  GotoFrame2 1
  GotoFrame2 2 0x1234
  GotoFrame2 3 1
  GotoFrame2 4
  raw 0x9F
  raw 0x9F 02
}
end
