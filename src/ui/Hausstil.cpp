// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "Hausstil.h"

#include "Farben.h"
#include "Hausfarben.h"
#include "Stilmaler.h"
#include "Symbole.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFocusFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollArea>
#include <QSlider>
#include <QStyleOption>
#include <QTabBar>
#include <QTextCharFormat>

#include <algorithm>
#include <utility>

namespace paukfix {

using namespace Qt::StringLiterals;

namespace {

constexpr int Knopfpolster = 16; // left and right of a button's text
constexpr int Feldpolster = 8;   // left and right of a field's text
constexpr int Reiterabstand = 6; // between tabs
constexpr int Kopfpolster = 3;   // more beside a column's heading, which so stands where its cells do

int Hoehe(const QStyleOption *option, int bei18, int mehr)
{
    return std::max(bei18, option->fontMetrics.height() + mehr);
}

Stilmaler::Knopfart Art(const QWidget *widget)
{
    if (widget && widget->property("leitend").toBool())
        return Stilmaler::Knopfart::Leitend;
    if (widget && widget->property("loeschend").toBool())
        return Stilmaler::Knopfart::Loeschend;
    return Stilmaler::Knopfart::Gewoehnlich;
}

QColor Zeichenfarbe(const QWidget *widget)
{
    return widget ? widget->property("zeichenfarbe").value<QColor>() : QColor();
}

QFont Knopfschrift(QFont schrift, Stilmaler::Knopfart art)
{
    if (art == Stilmaler::Knopfart::Leitend)
        schrift.setWeight(QFont::DemiBold);
    return schrift;
}

// Fields show the keyboard in their outline, lists and tables too.
bool TraegtRingAussen(const QWidget *widget)
{
    const QVariant wunsch = widget->property("fokusring");
    if (wunsch.isValid())
        return wunsch.toBool();
    return qobject_cast<const QAbstractButton *>(widget) || qobject_cast<const QSlider *>(widget) ||
           qobject_cast<const QLabel *>(widget);
}

// A tick box or option may be wider than what it shows.
QRect Ringplatz(const QWidget *widget)
{
    if (!qobject_cast<const QCheckBox *>(widget) && !qobject_cast<const QRadioButton *>(widget))
        return widget->rect();
    const QSize groesse = widget->sizeHint().boundedTo(widget->size());
    const QRect platz(0, (widget->height() - groesse.height()) / 2, groesse.width(), groesse.height());
    return QStyle::visualRect(widget->layoutDirection(), widget->rect(), platz);
}

const QAbstractScrollArea *Rolle(const QWidget *widget)
{
    return qobject_cast<const QAbstractScrollArea *>(widget);
}

// The frame of a list or text field; its viewport lies in the middle.
void RahmenNeu(QWidget *widget)
{
    if (const QAbstractScrollArea *rolle = Rolle(widget))
        widget->update(QRegion(widget->rect()).subtracted(rolle->viewport()->geometry()));
    else if (widget)
        widget->update();
}

void Klappfeld(QPainter &maler, const QStyle &stil, const QStyleOptionComboBox &option, const QWidget *widget)
{
    if (option.frame) {
        const bool offen = option.state & (QStyle::State_On | QStyle::State_Sunken);
        Stilmaler::Feld(maler, option,
                        option.editable ? option.palette.color(QPalette::Base)
                        : offen         ? HausfarbenZu(option.palette).gewaehlt
                                        : Stilmaler::Knopfgrund(option.palette));
    }
    if (option.subControls & QStyle::SC_ComboBoxArrow)
        Stilmaler::Pfeil(
            maler, stil.subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxArrow, widget), false,
            option.palette.color(option.editable ? QPalette::Text : QPalette::ButtonText));
}

void Drehfeld(QPainter &maler, const QStyle &stil, const QStyleOptionSpinBox &option, const QWidget *widget)
{
    if (option.frame)
        Stilmaler::Feld(maler, option, option.palette.color(QPalette::Base));
    if (option.buttonSymbols == QAbstractSpinBox::NoButtons)
        return;
    const auto pfeil = [&](QStyle::SubControl teil, QAbstractSpinBox::StepEnabledFlag schritt) {
        const bool geht = (option.stepEnabled & schritt) && (option.state & QStyle::State_Enabled);
        Stilmaler::Pfeil(maler, stil.subControlRect(QStyle::CC_SpinBox, &option, teil, widget),
                         teil == QStyle::SC_SpinBoxUp,
                         option.palette.color(geht ? QPalette::Active : QPalette::Disabled, QPalette::Text));
    };
    pfeil(QStyle::SC_SpinBoxUp, QAbstractSpinBox::StepUpEnabled);
    pfeil(QStyle::SC_SpinBoxDown, QAbstractSpinBox::StepDownEnabled);
}

} // namespace

Hausstil::Hausstil() : QProxyStyle(u"Fusion"_s)
{
    connect(qApp, &QApplication::focusChanged, this, &Hausstil::FokusFolgen);
}

void Hausstil::Einrichten()
{
    QApplication::setStyle(new Hausstil); // the application takes it
}

// Selections are petrol, in whatever the desktop has them.
void Hausstil::polish(QPalette &palette)
{
    QProxyStyle::polish(palette);
    constexpr QColor Petrol(0x2F, 0x6B, 0x7E);
    // Some dark desktops write what cannot be used in black.
    for (const auto &[text, grund] : {std::pair(QPalette::WindowText, QPalette::Window),
                                      {QPalette::Text, QPalette::Base},
                                      {QPalette::ButtonText, QPalette::Button}})
        palette.setColor(QPalette::Disabled, text,
                         Farben::Lesbar(palette.color(QPalette::Disabled, text),
                                        palette.color(QPalette::Active, grund),
                                        Farben::KontrastUmriss + 0.5));
    const Hausfarben &haus = HausfarbenZu(palette);
    palette.setColor(QPalette::Active, QPalette::Highlight, Petrol);
    palette.setColor(QPalette::Active, QPalette::HighlightedText, Qt::white);
    palette.setColor(QPalette::Inactive, QPalette::Highlight, haus.gewaehlt);
    palette.setColor(QPalette::Inactive, QPalette::HighlightedText,
                     palette.color(QPalette::Active, QPalette::Text));
    const QColor grund = palette.color(QPalette::Base);
    for (const auto gruppe : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(gruppe, QPalette::Link, Farben::Lesbar(haus.fokus, grund));
        palette.setColor(gruppe, QPalette::LinkVisited, Farben::Lesbar(haus.fokus, grund));
        palette.setColor(gruppe, QPalette::PlaceholderText, Farben::Lesbar(haus.leise, grund));
    }
}

void Hausstil::polish(QWidget *widget)
{
    QProxyStyle::polish(widget);
    if (qobject_cast<QLineEdit *>(widget) || qobject_cast<QComboBox *>(widget))
        widget->setAttribute(Qt::WA_Hover);
}

// The ring is a widget of the window over all others: nothing that the control stands in cuts it off.
void Hausstil::FokusFolgen(QWidget *vorher, QWidget *jetzt)
{
    for (QWidget *widget : {vorher, jetzt})
        if (widget)
            RahmenNeu(widget);
    if (jetzt && !jetzt->isWindow() && TraegtRingAussen(jetzt)) {
        if (!ring_)
            ring_ = new QFocusFrame(jetzt->window());
        ring_->setWidget(jetzt);
        ring_->show(); // it stays away from a control that is not laid out yet, and would not come back
    } else if (ring_) {
        ring_->setWidget(nullptr);
    }
}

void Hausstil::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                             const QWidget *widget) const
{
    switch (element) {
    case PE_PanelLineEdit: {
        const auto *rahmen = qstyleoption_cast<const QStyleOptionFrame *>(option);
        if (rahmen && rahmen->lineWidth > 0)
            Stilmaler::Feld(*painter, *option, option->palette.color(QPalette::Base));
        else
            painter->fillRect(option->rect, option->palette.brush(QPalette::Base));
        // A figure that can be copied has no frame, but is a stop of the keyboard.
        if (rahmen && rahmen->lineWidth <= 0 && (option->state & State_ReadOnly) &&
            (option->state & State_HasFocus))
            Stilmaler::Ring(*painter, option->rect, Stilmaler::KleinerRadius,
                            Stilmaler::Fokus(option->palette));
        return;
    }
    case PE_FrameLineEdit:
        Stilmaler::Feld(*painter, *option);
        return;
    case PE_Frame:
        if (const QAbstractScrollArea *rolle = Rolle(widget)) {
            const QWidget *innen = rolle->viewport();
            Stilmaler::Feld(*painter, *option, innen->palette().color(innen->backgroundRole()));
            return;
        }
        break;
    case PE_FrameGroupBox: {
        QStyleOption rahmen = *option; // below the title
        rahmen.state &= ~State_HasFocus;
        const auto *gruppe = qobject_cast<const QGroupBox *>(widget);
        if (gruppe && !gruppe->title().isEmpty())
            rahmen.rect.setTop(rahmen.rect.top() + option->fontMetrics.height() + 3);
        Stilmaler::Feld(*painter, rahmen);
        return;
    }
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        Stilmaler::Haken(*painter, *option, Zeichenfarbe(widget));
        return;
    case PE_IndicatorRadioButton:
        Stilmaler::Punkt(*painter, *option, Zeichenfarbe(widget));
        return;
    case PE_PanelButtonTool:
        Stilmaler::Werkzeugknopf(*painter, *option);
        return;
    case PE_FrameFocusRect:
        // A ring is around the control already, or the field's outline is one.
        if (!widget || !(TraegtRingAussen(widget) || qobject_cast<const QComboBox *>(widget))) {
            const auto *fokus = qstyleoption_cast<const QStyleOptionFocusRect *>(option);
            const QColor grund = fokus && fokus->backgroundColor.isValid()
                                     ? fokus->backgroundColor
                                     : option->palette.color(QPalette::Window);
            Stilmaler::Ring(
                *painter, option->rect, Stilmaler::KleinerRadius,
                Farben::Lesbar(HausfarbenZu(option->palette).fokus, grund, Farben::KontrastUmriss));
        }
        return;
    default:
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void Hausstil::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                           const QWidget *widget) const
{
    if (element == CE_FocusFrame) {
        const auto *rahmen = qobject_cast<const QFocusFrame *>(widget);
        if (!rahmen || !rahmen->widget())
            return;
        constexpr int Rand = Stilmaler::Ringbreite + Stilmaler::Ringabstand;
        const bool zeile = Ringplatz(rahmen->widget()) != rahmen->widget()->rect() ||
                           !qobject_cast<const QPushButton *>(rahmen->widget());
        Stilmaler::Ring(*painter, QRectF(Ringplatz(rahmen->widget())).adjusted(0, 0, 2 * Rand, 2 * Rand),
                        zeile ? Stilmaler::Radius - 2 : Stilmaler::Radius + Rand - 1,
                        Stilmaler::Fokus(rahmen->window()->palette()));
        return;
    }
    const auto *knopf = qstyleoption_cast<const QStyleOptionButton *>(option);
    if (knopf && element == CE_PushButtonBevel) {
        Stilmaler::Knopf(*painter, *knopf, Art(widget));
        return;
    }
    if (const auto *feld = qstyleoption_cast<const QStyleOptionComboBox *>(option);
        feld && element == CE_ComboBoxLabel) {
        QStyleOptionComboBox gekuerzt = *feld;
        const int breite =
            proxy()->subControlRect(CC_ComboBox, feld, SC_ComboBoxEditField, widget).width() - 2;
        // An addition in brackets goes first.
        if (const qsizetype klammer = feld->currentText.lastIndexOf(u" (");
            klammer > 0 && feld->fontMetrics.horizontalAdvance(feld->currentText) > breite)
            gekuerzt.currentText.truncate(klammer);
        gekuerzt.currentText = feld->fontMetrics.elidedText(gekuerzt.currentText, Qt::ElideRight, breite);
        QProxyStyle::drawControl(element, &gekuerzt, painter, widget);
        return;
    }
    if (element == CE_MenuBarItem || element == CE_MenuBarEmptyArea) {
        QProxyStyle::drawControl(element, option, painter, widget);
        // The toolkit's line has gaps between the entries where a pixel is not a whole one.
        if (!(option->state & State_Selected))
            painter->fillRect(QRect(option->rect.left(), option->rect.bottom(), option->rect.width(), 1),
                              Farben::Getoent(option->palette.color(QPalette::WindowText),
                                              option->palette.color(QPalette::Window), 0.15));
        return;
    }
    if (const auto *kopf = qstyleoption_cast<const QStyleOptionHeader *>(option);
        kopf && element == CE_HeaderLabel) {
        QStyleOptionHeaderV2 eingerueckt;
        static_cast<QStyleOptionHeader &>(eingerueckt) = *kopf;
        eingerueckt.rect.adjust(Kopfpolster, 0, -Kopfpolster, 0);
        QProxyStyle::drawControl(element, &eingerueckt, painter, widget);
        return;
    }
    if (const auto *reiter = qstyleoption_cast<const QStyleOptionTab *>(option);
        reiter && (element == CE_TabBarTabShape || element == CE_TabBarTabLabel)) {
        QStyleOptionTab schmaler = *reiter;
        schmaler.rect.adjust(0, 0, -Reiterabstand, 0);
        if (element == CE_TabBarTabShape)
            Stilmaler::Reiter(*painter, schmaler);
        else
            QProxyStyle::drawControl(element, &schmaler, painter, widget);
        return;
    }
    if (knopf && element == CE_PushButtonLabel) {
        QStyleOptionButton beschriftet = *knopf;
        beschriftet.palette.setColor(QPalette::ButtonText, Stilmaler::Knopftext(knopf->palette, Art(widget)));
        painter->save();
        painter->setFont(Knopfschrift(painter->font(), Art(widget)));
        QProxyStyle::drawControl(element, &beschriftet, painter, widget);
        painter->restore();
        return;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void Hausstil::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                                  QPainter *painter, const QWidget *widget) const
{
    if (const auto *klappfeld = qstyleoption_cast<const QStyleOptionComboBox *>(option))
        Klappfeld(*painter, *proxy(), *klappfeld, widget);
    else if (const auto *drehfeld = qstyleoption_cast<const QStyleOptionSpinBox *>(option))
        Drehfeld(*painter, *proxy(), *drehfeld, widget);
    else
        QProxyStyle::drawComplexControl(control, option, painter, widget);
}

// The text of a box begins where those of all fields do, clear of the outline.
QRect Hausstil::subControlRect(ComplexControl control, const QStyleOptionComplex *option, SubControl teil,
                               const QWidget *widget) const
{
    const QRect platz = QProxyStyle::subControlRect(control, option, teil, widget);
    const auto *klappfeld = qstyleoption_cast<const QStyleOptionComboBox *>(option);
    if (!klappfeld || teil != SC_ComboBoxEditField)
        return platz;
    const int luft = klappfeld->editable ? Feldpolster - 2 // the toolkit's line has 2 px of its own
                                         : Feldpolster - 1;
    return visualRect(option->direction, option->rect,
                      visualRect(option->direction, option->rect, platz).adjusted(luft - 2, 0, 0, 0));
}

QRect Hausstil::subElementRect(SubElement element, const QStyleOption *option, const QWidget *widget) const
{
    const auto *rahmen = qstyleoption_cast<const QStyleOptionFrame *>(option);
    if (element == SE_LineEditContents && rahmen && rahmen->lineWidth > 0)
        return option->rect.adjusted(Feldpolster, Stilmaler::Ringbreite, -Feldpolster,
                                     -Stilmaler::Ringbreite);
    return QProxyStyle::subElementRect(element, option, widget);
}

QSize Hausstil::sizeFromContents(ContentsType type, const QStyleOption *option, const QSize &size,
                                 const QWidget *widget) const
{
    switch (type) {
    case CT_PushButton: {
        const auto *knopf = qstyleoption_cast<const QStyleOptionButton *>(option);
        if (!knopf)
            break;
        const bool leitend = Art(widget) == Stilmaler::Knopfart::Leitend;
        int breite = size.width() + 2 * Knopfpolster;
        if (leitend) {
            const QFont &schrift = widget->font();
            breite += QFontMetrics(Knopfschrift(schrift, Stilmaler::Knopfart::Leitend))
                          .size(Qt::TextShowMnemonic, knopf->text)
                          .width() -
                      QFontMetrics(schrift).size(Qt::TextShowMnemonic, knopf->text).width();
        }
        const int mindestens = leitend ? 128 : knopf->text.isEmpty() ? 44 : 76;
        const int polster = leitend ? 22 : 18;
        return {std::max(breite, mindestens),
                std::max(Hoehe(option, leitend ? 40 : 36, polster), size.height() + polster)};
    }
    case CT_ToolButton:
        return (size + QSize(14, 14)).expandedTo({34, 34});
    case CT_HeaderSection:
        return QProxyStyle::sizeFromContents(type, option, size, widget) + QSize(2 * Kopfpolster, 0);
    case CT_TabBarTab:
        return {size.width() + Knopfpolster, Hoehe(option, 32, 14)};
    case CT_ItemViewItem: // the ring of the current row stands clear of its text
        return QProxyStyle::sizeFromContents(type, option, size, widget) + QSize(0, 6);
    case CT_LineEdit: {
        const auto *rahmen = qstyleoption_cast<const QStyleOptionFrame *>(option);
        if (!rahmen || rahmen->lineWidth <= 0)
            break;
        return {size.width() + 2 * Feldpolster, std::max(Hoehe(option, 32, 14), size.height() + 4)};
    }
    case CT_ComboBox:
    case CT_SpinBox: {
        const QSize groesse = QProxyStyle::sizeFromContents(type, option, size, widget);
        return {groesse.width() + Feldpolster, std::max(groesse.height(), Hoehe(option, 32, 14))};
    }
    default:
        break;
    }
    return QProxyStyle::sizeFromContents(type, option, size, widget);
}

int Hausstil::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    switch (metric) {
    case PM_DefaultFrameWidth:
        // As much as the corners are round: the viewport is square.
        if (Rolle(widget))
            return 4;
        break;
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
        return 18;
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
        return 16;
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
        return 8;
    case PM_ButtonIconSize:
        return 20;
    case PM_FocusFrameHMargin:
    case PM_FocusFrameVMargin:
        return Stilmaler::Ringbreite + Stilmaler::Ringabstand;
    case PM_TabBarTabShiftHorizontal:
    case PM_TabBarTabShiftVertical:
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
        return 0;
    default:
        break;
    }
    return QProxyStyle::pixelMetric(metric, option, widget);
}

int Hausstil::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                        QStyleHintReturn *returnData) const
{
    switch (hint) {
    case SH_DialogButtonBox_ButtonsHaveIcons:
        return 0;
    case SH_FocusFrame_AboveWidget:
        return 1;
    case SH_FocusFrame_Mask: {
        // What the ring goes around stays free, but for the corners, over which a round ring passes.
        const int da = QProxyStyle::styleHint(hint, option, widget, returnData);
        auto *maske = qstyleoption_cast<QStyleHintReturnMask *>(returnData);
        if (da && maske && option) {
            const QRect ganz = option->rect;
            const auto frei = [&](int x, int y) {
                constexpr int Rand = Stilmaler::Ringbreite + Stilmaler::Ringabstand;
                maske->region -= ganz.adjusted(Rand + x, Rand + y, -Rand - x, -Rand - y);
            };
            constexpr int Ecke = static_cast<int>(Stilmaler::Radius) / 2;
            maske->region = ganz;
            frei(Ecke, 0);
            frei(0, Ecke);
        }
        return da;
    }
    case SH_TextControl_FocusIndicatorTextCharFormat:
        // A link in a text that has the keyboard; a dotted outline is easily missed.
        if (auto *zurueck = qstyleoption_cast<QStyleHintReturnVariant *>(returnData); zurueck && option) {
            QTextCharFormat verweis;
            verweis.setBackground(option->palette.color(QPalette::Active, QPalette::Highlight));
            verweis.setForeground(option->palette.color(QPalette::Active, QPalette::HighlightedText));
            zurueck->variant = verweis;
            return 1;
        }
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    default:
        return QProxyStyle::styleHint(hint, option, widget, returnData);
    }
}

QIcon Hausstil::standardIcon(StandardPixmap pixmap, const QStyleOption *option, const QWidget *widget) const
{
    switch (pixmap) {
    case SP_MessageBoxQuestion:
        return Symbol(Symbole::Frage);
    case SP_MessageBoxWarning:
    case SP_MessageBoxCritical:
        return Symbol(Symbole::Ausruf);
    case SP_MessageBoxInformation:
        return Symbol(Symbole::Hinweis);
    case SP_LineEditClearButton:
        return Symbol(Symbole::Leeren);
    // Of the file dialog.
    case SP_ArrowBack:
        return Symbol(Symbole::Zurueck);
    case SP_ArrowForward:
        return Symbol(Symbole::Vor);
    case SP_FileDialogToParent:
        return Symbol(Symbole::Hinauf);
    case SP_FileDialogNewFolder:
        return Symbol(Symbole::NeuerOrdner);
    case SP_FileDialogListView:
        return Symbol(Symbole::Kacheln);
    case SP_FileDialogDetailedView:
        return Symbol(Symbole::Einzelheiten);
    // Of every menu bar, however wide: the toolkit's own is a file, for which all readers of pictures are
    // loaded, a fifth of a start.
    case SP_ToolBarHorizontalExtensionButton:
        return Symbol(Symbole::Schnellvor);
    default:
        return QProxyStyle::standardIcon(pixmap, option, widget);
    }
}

} // namespace paukfix
