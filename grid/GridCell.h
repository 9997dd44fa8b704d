#pragma once

#include "grid/GridCellBase.h"

#include <QPainter>

#include <memory>

/// A cell of text with an image before it.
///
/// Its own four colours, format, font and size may be unset; those of the look count then.
/// The cell's width is: left margin, image and a gap (where it has one), text, right margin, and
/// the room of the marks between header cells.
/// Its height is the higher of text line and image, a quarter of that as air, and the margins.
class CGridCell : public CGridCellBase {
public:
    CGridCell();
    ~CGridCell() override;

    void SetText(const QString& text) override { m_strText = text; }
    void SetImage(int image) override { m_nImage = image; }
    void SetData(qint32 data) override;
    void SetState(quint32 state) override { m_nState = static_cast<quint16>(state); }
    void SetFormat(quint32 format) override;
    void SetTextClr(COLORREF colour) override { m_crTextClr = colour; }
    void SetBackClr(COLORREF colour) override { m_crBackClr = colour; }
    void SetSelTextClr(COLORREF colour) override;
    void SetSelBackClr(COLORREF colour) override;
    void SetFont(const QFont* font) override;
    void SetCoords(int width, int height) override;
    void SetLook(const GridLook* look) override { m_pLook = look; }

    [[nodiscard]] const QString& GetText() const override { return m_strText; }
    [[nodiscard]] QString GetTipText() const override { return m_strText; }
    [[nodiscard]] int GetImage() const override { return m_nImage; }
    [[nodiscard]] qint32 GetData() const override;
    [[nodiscard]] quint32 GetState() const override { return m_nState; }
    [[nodiscard]] quint32 GetFormat() const override;
    [[nodiscard]] COLORREF GetTextClr() const override;
    [[nodiscard]] COLORREF GetBackClr() const override;
    [[nodiscard]] COLORREF GetSelTextClr() const override;
    [[nodiscard]] COLORREF GetSelBackClr() const override;
    [[nodiscard]] const QFont& GetFont() const override;
    [[nodiscard]] const CMeasuredFont& GetFontObject() const override;
    [[nodiscard]] QSize GetSize() const override;

    bool Draw(QPainter& painter, int row, int col, QRect rect, bool eraseBackground) override;
    [[nodiscard]] std::optional<COLORREF> GetFlatColour() const override;
    [[nodiscard]] QSize GetTextExtent(const QString& text) const override;
    [[nodiscard]] QSize GetCellExtent() const override;
    [[nodiscard]] QRect GetTextRect(QRect cell) const override;

protected:
    /// Fills the cell's rectangle with its colour.
    virtual void FillBackground(QPainter& painter, const QRect& rect, const QColor& colour) const;

    /// Draws what stands inside the margins: the image, the text.
    virtual void DrawContent(QPainter& painter, QRect rect, const QColor& textColour) const;

    /// The width of what stands inside the margins.
    [[nodiscard]] virtual int ContentWidth() const;

    const GridLook* m_pLook = nullptr;

private:
    struct Own;

    [[nodiscard]] Own& MakeOwn();
    void DrawFixedEdges(QPainter& painter, CCellID cell, const QRect& rect,
                        const QColor& background) const;
    void DrawText(QPainter& painter, const QRect& rect) const;
    [[nodiscard]] QRect WithoutMargins(const QRect& rect) const;
    [[nodiscard]] bool HasImage() const;
    [[nodiscard]] bool ShowsImage(const QRect& content) const;
    [[nodiscard]] QRect BesideImage(QRect content) const;
    [[nodiscard]] bool HasHeaderMarks() const;

    // A large grid has a million cells: what few of them have lies apart.
    QString m_strText;
    std::unique_ptr<Own> m_pOwn; ///< null: nothing of it is set
    COLORREF m_crTextClr = CLR_DEFAULT;
    COLORREF m_crBackClr = CLR_DEFAULT;
    qint32 m_nImage = -1;
    quint16 m_nState = 0;
};
