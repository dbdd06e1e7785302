Attribute VB_Name = "modReport"
Option Explicit

' The library whose articles this report was written for; shown in its footer.
Public Const CATALOGUE_LIBRARY As String = "{9ED85CCA-C6B5-59E1-8CF2-1849295CDF57}"

' Writes what each article of a catalogue costs, singly and by ten: StoreReport CATALOGUE

Public Sub Main()
    Dim objFile As New StoreCatalogue.CatalogueFile
    Dim objReport As PriceReport

    If Len(Command$) = 0 Then
        MsgBox "Which catalogue?", vbInformation, App.Title
        Exit Sub
    End If
    Set objReport = New PriceReport
    objReport.Path = App.Path & "\prices.txt"
    objReport.Create objFile.ReadArticles(Command$)
End Sub
