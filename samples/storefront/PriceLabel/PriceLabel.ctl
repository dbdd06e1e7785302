VERSION 5.00
Begin VB.UserControl PriceLabel 
   BackColor       =   &H00FFFFFF&
   ClientHeight    =   735
   ClientLeft      =   0
   ClientTop       =   0
   ClientWidth     =   2535
   ScaleHeight     =   735
   ScaleWidth      =   2535
   Begin VB.Label lblAmount 
      Alignment       =   1  'Right Justify
      BackStyle       =   0  'Transparent
      Caption         =   "0.00"
      BeginProperty Font 
         Name            =   "Tahoma"
         Size            =   18
         Charset         =   0
         Weight          =   700
         Underline       =   0   'False
         Italic          =   0   'False
         Strikethrough   =   0   'False
      EndProperty
      Height          =   495
      Left            =   120
      TabIndex        =   0
      Top             =   120
      Width           =   2295
   End
End
Attribute VB_Name = "PriceLabel"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = True
Attribute VB_PredeclaredId = False
Attribute VB_Exposed = True
Option Explicit

Private m_objAmount As StoreMoney.Amount

Public Event Click()

Public Property Get Amount() As StoreMoney.Amount
Attribute Amount.VB_MemberFlags = "400"
    Set Amount = m_objAmount
End Property

Public Property Set Amount(ByVal NewAmount As StoreMoney.Amount)
    Set m_objAmount = NewAmount
    ShowAmount
End Property

Public Sub ShowArticle(ByVal Article As StoreCatalogue.Article, _
                       ByVal Prices As StorePricing.PriceList)
    Set Amount = Prices.PriceOf(Article, 1)
    lblAmount.ToolTipText = Article.Title
End Sub

Private Sub ShowAmount()
    If m_objAmount Is Nothing Then
        lblAmount.Caption = ""
    Else
        lblAmount.Caption = m_objAmount.Text
    End If
End Sub

Private Sub lblAmount_Click()
    RaiseEvent Click
End Sub

Private Sub UserControl_Resize()
    On Error Resume Next
    lblAmount.Move 120, 120, ScaleWidth - 240, ScaleHeight - 240
End Sub
