Attribute VB_Name = "modTill"
Option Explicit

Public Const SHOP_NAME As String = "Corner Café"

Public gobjArticles As StoreCatalogue.Articles
Public gobjPrices As StorePricing.PriceList
Public gobjStock As StoreStock.StockBook
Public gobjJournal As StoreCore.Journal

Public Sub Main()
    Dim objFile As New StoreCatalogue.CatalogueFile

    Set gobjJournal = New StoreCore.Journal
    gobjJournal.Folder = App.Path
    Set gobjStock = New StoreStock.StockBook
    Set gobjPrices = New StorePricing.PriceList
    Set gobjPrices.Stock = gobjStock
    gobjPrices.AddDiscount 10, 5
    On Error GoTo NoCatalogue
    Set gobjArticles = objFile.ReadArticles(App.Path & "\catalogue.txt")
    frmTill.Show
    Exit Sub

NoCatalogue:
    MsgBox "The catalogue cannot be read: " & Err.Description, vbExclamation, SHOP_NAME
End Sub
