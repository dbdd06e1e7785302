Attribute VB_Name = "modLayout"
Option Explicit

Public Const PAPER_WIDTH As Long = 40

Public Function Justified(ByVal LeftText As String, ByVal RightText As String) As String
    Dim lngGap As Long

    lngGap = PAPER_WIDTH - Len(LeftText) - Len(RightText)
    If lngGap < 1 Then
        LeftText = Left$(LeftText, Len(LeftText) + lngGap - 1)
        lngGap = 1
    End If
    Justified = LeftText & Space$(lngGap) & RightText
End Function

Public Function Centred(ByVal Text As String) As String
    Dim lngGap As Long

    lngGap = (PAPER_WIDTH - Len(Text)) \ 2
    While lngGap > 0
        Centred = Centred & " "
        lngGap = lngGap - 1
    Wend
    Centred = Centred & Text
End Function
