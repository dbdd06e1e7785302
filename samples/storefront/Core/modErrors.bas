Attribute VB_Name = "modErrors"
Option Explicit

Public Const errEmptyText As Long = vbObjectError + 1001
Public Const errNotPositive As Long = vbObjectError + 1002
Public Const errNoFile As Long = vbObjectError + 1003

Public Sub RaiseError(ByVal Number As Long, ByVal Source As String, ByVal Text As String)
    Err.Raise Number, "StoreCore." & Source, Text
End Sub
