' Reads the observation and prints its members, one a line. The last line is "end": without it the script did not get
' through. With an argument it first asks the other object to connect, and waits until that is safe.
Option Explicit
Dim observation, weather, name, number, begin
Set observation = CreateObject("Orvalis.Observation")
If WScript.Arguments.Count > 0 Then
  Set weather = CreateObject("Orvalis.Weather")
  weather.Connected = True
  begin = Timer
  Do Until observation.Safe Or Timer - begin > 60
  Loop
End If
WScript.Echo "Safe " & TypeName(observation.Safe) & " " & observation.Safe
WScript.Echo "Since " & TypeName(observation.Since) & " " & Int(observation.Since / 1000)
For Each name In observation.Reasons
  WScript.Echo "Reason " & name
Next
WScript.Echo "Explanation " & observation.Explanation
WScript.Echo "AgeSeconds " & TypeName(observation.AgeSeconds) & " " & CLng(observation.AgeSeconds)
WScript.Echo "Source " & observation.Source
For Each name In observation.ValueNames
  WScript.Echo name & " " & observation.Value(name)
Next
On Error Resume Next
For Each name In Array("ambient_c", "pressure")
  Err.Clear
  number = observation.Value(name)
  WScript.Echo name & " " & Err.Number & " " & Err.Description
Next
WScript.Echo "end"
