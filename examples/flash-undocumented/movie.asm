# Reads out the receiver's serial number, with a method that the platform does not document.
#
# The script is trace(tuner.GetSerial()). That the call is an argument is on purpose. The checker joins all calls of a
# movie, one behind the other, and takes "tuner" for the plug-in only behind a byte that cannot belong to a name. On its
# own the call would have none: it would begin the text, or follow the ")" of another call. Here "trace(" gives it one.

signature CWS
version 7

doaction {
  Push 0 "tuner"        # no arguments
  GetVariable
  Push "GetSerial"
  CallMethod
  Push 1 "trace"        # one argument: what the method gave
  CallFunction
  Pop
  End
}
showframe
end
