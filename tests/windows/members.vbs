' Reads every member of the automation object and prints one line each: the name, the type and the value, or the error.
' The last line is "end": without it the script did not get through.
Option Explicit
Dim weather
Set weather = Nothing

Sub Report(name, value, number, source, description)
  If number = 0 Then
    WScript.Echo name & " = " & TypeName(value) & " " & CStr(value)
  Else
    WScript.Echo name & " raised " & Hex(number) & " [" & source & "] " & description
  End If
End Sub

Dim i, name, value
On Error Resume Next
Set weather = CreateObject("Orvalis.Weather")
If Err.Number <> 0 Then
  WScript.Echo "no object: " & Hex(Err.Number) & " " & Err.Description
  WScript.Quit 1
End If

For i = 0 To WScript.Arguments.Count - 1
  name = WScript.Arguments.Item(i)
  value = Empty
  Err.Clear
  Select Case name
    Case "Safe" value = weather.Safe
    Case "AmbientTemperature" value = weather.AmbientTemperature
    Case "BarometricPressure" value = weather.BarometricPressure
    Case "Clouds" value = weather.Clouds
    Case "DewPoint" value = weather.DewPoint
    Case "InsideTemperature" value = weather.InsideTemperature
    Case "Name" value = weather.Name
    Case "Precipitation" value = weather.Precipitation
    Case "RelativeHumidity" value = weather.RelativeHumidity
    Case "WindDirection" value = weather.WindDirection
    Case "WindVelocity" value = weather.WindVelocity
    Case "Connected" value = weather.Connected
    Case "Connected=True" weather.Connected = True
    Case "Connected=False" weather.Connected = False
    Case "WindSpeedCloseD" value = weather.WindSpeedCloseD
    Case "WindSpeedWarn" value = weather.WindSpeedWarn
    Case "Temperature" value = weather.Temperature
    Case "Halt" weather.Halt
    Case "SetupDialog" weather.SetupDialog
    Case "Safe=True" weather.Safe = True
    Case "Pressure" value = weather.Pressure
    Case "Halt(1)" weather.Halt 1
    Case "Connected=word" weather.Connected = "word"
  End Select
  Report name, value, Err.Number, Err.Source, Err.Description
Next
WScript.Echo "end"
