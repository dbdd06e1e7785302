VERSION 5.00
Object = "{D09F9DBF-4BA0-55F8-8C45-D0012196AE6B}#1.0#0"; "StorePriceLabel.ocx"
Begin VB.Form frmTill 
   BorderStyle     =   1  'Fixed Single
   Caption         =   "Till"
   ClientHeight    =   3735
   ClientLeft      =   45
   ClientTop       =   330
   ClientWidth     =   5655
   LinkTopic       =   "Form1"
   MaxButton       =   0   'False
   ScaleHeight     =   3735
   ScaleWidth      =   5655
   StartUpPosition =   2  'CenterScreen
   Begin VB.CommandButton cmdPay 
      Caption         =   "&Pay"
      Height          =   375
      Left            =   4440
      TabIndex        =   3
      Top             =   3240
      Width           =   1095
   End
   Begin StorePriceLabel.PriceLabel prlTotal 
      Height          =   735
      Left            =   3000
      TabIndex        =   2
      Top             =   2400
      Width           =   2535
      _ExtentX        =   4471
      _ExtentY        =   1296
   End
   Begin VB.ListBox lstLines 
      Height          =   1620
      Left            =   120
      TabIndex        =   1
      Top             =   600
      Width           =   5415
   End
   Begin VB.TextBox txtCode 
      Height          =   315
      Left            =   120
      TabIndex        =   0
      Top             =   120
      Width           =   2055
   End
End
Attribute VB_Name = "frmTill"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = False
Attribute VB_PredeclaredId = True
Attribute VB_Exposed = False
Option Explicit

Private WithEvents m_objOrder As StoreOrders.Order
Attribute m_objOrder.VB_VarHelpID = -1

Private Sub Form_Load()
    Me.Caption = SHOP_NAME
    NewOrder
End Sub

Private Sub NewOrder()
    Set m_objOrder = New StoreOrders.Order
    Set m_objOrder.Prices = gobjPrices
    lstLines.Clear
    Set prlTotal.Amount = m_objOrder.Total
End Sub

Private Sub txtCode_KeyPress(KeyAscii As Integer)
    If KeyAscii <> vbKeyReturn Then Exit Sub
    KeyAscii = 0
    If gobjArticles.Exists(txtCode.Text) Then
        m_objOrder.Add gobjArticles.Item(txtCode.Text)
        txtCode.Text = ""
    Else
        Beep
    End If
End Sub

Private Sub m_objOrder_LineAdded(ByVal NewLine As StoreOrders.OrderLine)
    lstLines.AddItem NewLine.Article.Title & vbTab & NewLine.Total.Text
    Set prlTotal.Amount = m_objOrder.Total
End Sub

Private Sub cmdPay_Click()
    Dim objReceipt As New StoreReceipts.Receipt

    If m_objOrder.Lines.Count = 0 Then Exit Sub
    objReceipt.ShopName = SHOP_NAME
    Set objReceipt.Order = m_objOrder
    objReceipt.Save App.Path & "\receipts.txt", m_objOrder.Total
    m_objOrder.Finish gobjStock
    gobjJournal.Note "Sold for " & m_objOrder.Total.Text
    NewOrder
End Sub
