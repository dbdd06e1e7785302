Attribute VB_Name = "modRounding"
Option Explicit

' Half a cent goes up, as on every receipt; Round would send it to the even neighbour.
Public Function ToCents(ByVal Value As Currency) As Currency
    If Value >= 0 Then
        ToCents = Int(Value * 100 + 0.5) / 100
    Else
        ToCents = -Int(-Value * 100 + 0.5) / 100
    End If
End Function
