# Tags around scripts, long headers, and pools that outlive their script.
signature CWS
tag 9 bytes ff 00 ff
doaction long { ConstantPool "one" "two" }
tag 69 long bytes 00 00 00 00
doaction { Push const8 1 }
doaction { raw 0x88 03 00 61 00 62 00 }
doaction { Push const8 0, const8 2 }
doaction { raw 0x88 00 }
doaction { Push const8 0 }
doaction length 2 { Push "longer than its tag says" }
end
doaction { Play }
