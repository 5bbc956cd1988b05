#include "canvas/ToolbarFixture.h"
#include "preferences/Config.h"

namespace brindlecam {

using test::kBarsCanvas;
using test::ToolbarFixture;

class TestToolbar final : public test::TestCase {
    Q_OBJECT

    static QStringList tooltips(const std::vector<BarButton*>& buttons)
    {
        QStringList all;
        for (const BarButton* button : buttons)
            all << button->toolTip();
        return all;
    }

    static std::vector<Tool> sizedTools()
    {
        return {Tool::pen, Tool::line, Tool::arrow, Tool::rect, Tool::marker, Tool::number};
    }

private Q_SLOTS:
    void toolsStandInOrderWithTheirTooltips()
    {
        const ToolbarFixture f;
        QStringList expected{QStringLiteral("Mover la selección o una anotación (⌫ la borra)")};
        for (const Tool tool : kAllTools)
            expected << tooltip(tool);
        expected << QStringLiteral("Color") << QStringLiteral("Deshacer (⌘Z)")
                 << QStringLiteral("Rehacer (⇧⌘Z)");
        QCOMPARE(tooltips(f.tools()), expected);
        QCOMPARE(f.bar(Qt::Vertical).size(), QSize(38, 390));
    }

    void actionsStandInOrderWithTheirTooltips()
    {
        const ToolbarFixture f;
        const QStringList expected{QStringLiteral("Copiar el texto de la selección (OCR)"),
                                   QStringLiteral("Fijar flotando en pantalla"),
                                   QStringLiteral("Captura con desplazamiento (páginas largas)"),
                                   QStringLiteral("Grabar esta área como GIF"),
                                   QStringLiteral("Copiar (⌘C o Enter)"),
                                   QStringLiteral("Guardar (⌘S)"),
                                   QStringLiteral("Cerrar (Esc)")};
        QCOMPARE(tooltips(f.actions()), expected);
        QCOMPARE(f.bar(Qt::Horizontal).size(), QSize(230, 38));
    }

    void everyControlHasAName()
    {
        const ToolbarFixture f;
        QStringList swatches;
        for (const BarButton* swatch : f.palette().swatches()) {
            QVERIFY(swatch->toolTip().isEmpty());
            swatches << swatch->accessibleName();
        }
        const QStringList colors{QStringLiteral("Rojo"),     QStringLiteral("Verde"),
                                 QStringLiteral("Amarillo"), QStringLiteral("Azul"),
                                 QStringLiteral("Negro"),    QStringLiteral("Blanco")};
        QCOMPARE(swatches, colors);
        for (const QWidget* control : f.canvas.findChildren<QWidget*>()) {
            if (control->focusPolicy() == Qt::NoFocus)
                continue; // bars and popups
            QVERIFY(!control->accessibleName().isEmpty());
            QVERIFY(control->toolTip().isEmpty() ||
                    control->toolTip() == control->accessibleName());
        }
    }

    void barsAndPopupsHaveNames()
    {
        const ToolbarFixture f;
        QCOMPARE(f.bar(Qt::Vertical).accessibleName(), QStringLiteral("Herramientas"));
        QCOMPARE(f.bar(Qt::Horizontal).accessibleName(), QStringLiteral("Acciones"));
        QCOMPARE(f.palette().accessibleName(), QStringLiteral("Colores"));
        for (const Tool tool : sizedTools())
            QCOMPARE(f.sizePopup(tool).accessibleName(), QStringLiteral("Tamaños"));
    }

    void thePaletteHoldsTheColoursAndTheOpacity()
    {
        const ToolbarFixture f;
        PaletteView& palette = f.palette();
        for (std::size_t i = 0; i < Config::palette.size(); ++i)
            QCOMPARE(palette.swatches().at(i)->swatch(), std::optional(Config::palette.at(i)));
        QCOMPARE(palette.minus().toolTip(), QStringLiteral("Menos opacidad del marcador"));
        QCOMPARE(palette.plus().toolTip(), QStringLiteral("Más opacidad del marcador"));
        QCOMPARE(palette.track().toolTip(), QStringLiteral("Opacidad del marcador"));
        QCOMPARE(palette.track().range().lower, 0.1);
        QCOMPARE(palette.track().range().upper, 1.0);
        QCOMPARE(palette.track().range().step, 0.05);
        QCOMPARE(palette.track().value(), 0.4);
    }

    void eachToolWithSizesHasAPopupOfItsRange()
    {
        const ToolbarFixture f;
        QCOMPARE(f.popups().size(), 7);
        for (const Tool tool : sizedTools()) {
            const PaletteView& popup = f.sizePopup(tool);
            QVERIFY(popup.swatches().empty());
            QCOMPARE(popup.minus().toolTip(), QStringLiteral("Más fino / pequeño"));
            QCOMPARE(popup.plus().toolTip(), QStringLiteral("Más grueso / grande"));
            QCOMPARE(popup.track().toolTip(), *sizeLabel(tool));
            QCOMPARE(popup.track().range().lower, sizes(tool)->minimum);
            QCOMPARE(popup.track().range().upper, sizes(tool)->maximum);
            QCOMPARE(popup.track().range().step, sizes(tool)->step);
            QCOMPARE(popup.track().value(), sizes(tool)->standard);
        }
    }

    void everyButtonReportsWhatItIsFor()
    {
        ToolbarFixture f;
        QStringList expected{QStringLiteral("pointer")};
        for (const Tool tool : kAllTools)
            expected << name(tool);
        expected << QStringLiteral("undo") << QStringLiteral("redo"); // the colour is our own
        for (BarButton* button : f.tools())
            button->click();
        QCOMPARE(f.taken(), expected);
        expected.clear();
        for (int i = 0; i < 7; ++i)
            expected << QStringLiteral("action %1").arg(i);
        for (BarButton* button : f.actions())
            button->click();
        QCOMPARE(f.taken(), expected);
        expected.clear();
        for (const QColor& color : Config::palette)
            expected << color.name();
        for (BarButton* swatch : f.palette().swatches())
            swatch->click();
        QCOMPARE(f.taken(), expected);
    }

    void exactlyOneOfPointerAndToolsIsOn()
    {
        ToolbarFixture f;
        const auto on = [&f] {
            std::vector<std::size_t> found;
            for (std::size_t i = 0; i < f.tools().size(); ++i) {
                if (f.tools().at(i)->isOn())
                    found.push_back(i);
            }
            return found;
        };
        QCOMPARE(on(), std::vector<std::size_t>{0});
        for (std::size_t i = 0; i < kAllTools.size(); ++i) {
            f.bars.setTool(kAllTools.at(i));
            QCOMPARE(on(), std::vector<std::size_t>{i + 1});
        }
        f.bars.setTool(std::nullopt);
        QCOMPARE(on(), std::vector<std::size_t>{0});
    }

    void theColourIsShownByItsButtonAndBySliders()
    {
        ToolbarFixture f;
        QCOMPARE(f.colorButton().swatch(), std::optional(Config::palette.front()));
        f.bars.setColor(Qt::blue);
        QCOMPARE(f.colorButton().swatch(), std::optional(QColor(Qt::blue)));
        for (const PaletteView* popup : f.popups())
            QCOMPARE(popup->track().color(), QColor(Qt::blue));
    }

    void aRoomThatIsNotBuiltHasItsButtonDisabled()
    {
        ToolbarFixture f;
        f.bars.setAvailable(Toolbar::Action::gif, Toolbar::Availability::disabled);
        f.actions().at(3)->click();
        QCOMPARE(f.taken(), QStringList());
        f.bars.setAvailable(Toolbar::Action::gif, Toolbar::Availability::enabled);
        f.actions().at(3)->click();
        QCOMPARE(f.taken(), QStringList(QStringLiteral("action 3")));
    }

    void minusAndPlusAskForAStepOfTheStoredSize()
    {
        ToolbarFixture f;
        f.sizePopup(Tool::pen).minus().click();
        f.sizePopup(Tool::pen).plus().click();
        f.sizePopup(Tool::marker).minus().click();
        f.prefs.setSize(20, Tool::number);
        f.sizePopup(Tool::number).plus().click();
        QCOMPARE(f.taken(),
                 (QStringList{QStringLiteral("pen 2"), QStringLiteral("pen 4"),
                              QStringLiteral("marker 14"), QStringLiteral("number 22")}));
    }

    void minusAndPlusAskForFivePercentOfTheStoredOpacity()
    {
        ToolbarFixture f;
        f.palette().minus().click();
        f.palette().plus().click();
        f.prefs.setMarkerOpacity(0.63);
        f.palette().plus().click();
        QCOMPARE(f.taken(),
                 (QStringList{QStringLiteral("opacity 0.35"), QStringLiteral("opacity 0.45"),
                              QStringLiteral("opacity 0.7")}));
    }

    void slidersReportWhatTheUserChooses()
    {
        ToolbarFixture f;
        f.sizePopup(Tool::arrow).track().choose(7);
        f.palette().track().choose(0.8);
        QCOMPARE(f.taken(),
                 (QStringList{QStringLiteral("arrow 7"), QStringLiteral("opacity 0.8")}));
    }

    void slidersFollowWhatIsStored()
    {
        ToolbarFixture f;
        f.prefs.setSize(9, Tool::rect);
        f.bars.sizeChanged(Tool::rect);
        QCOMPARE(f.sizePopup(Tool::rect).track().value(), 9.0);
        f.prefs.setMarkerOpacity(0.75);
        f.bars.opacityChanged();
        QCOMPARE(f.palette().track().value(), 0.75);
        f.bars.sizeChanged(Tool::text);
        QCOMPARE(f.taken(), QStringList());
    }

    void openingThePaletteReadsTheOpacityAnew()
    {
        ToolbarFixture f;
        f.prefs.setMarkerOpacity(0.2);
        f.colorButton().click();
        QVERIFY(f.bars.paletteShown());
        QCOMPARE(f.palette().track().value(), 0.2);
        f.colorButton().click();
        QVERIFY(!f.bars.paletteShown());
    }

    void onlyOnePopupIsOpenAtATime()
    {
        ToolbarFixture f;
        const auto open = [&f] {
            int count = 0;
            for (const PaletteView* popup : f.popups())
                count += popup->isHidden() ? 0 : 1;
            return count;
        };
        QCOMPARE(open(), 0);
        for (const Tool tool : sizedTools()) {
            f.bars.showSizePopup(tool);
            QVERIFY(f.bars.sizePopupShown(tool));
            QCOMPARE(open(), 1);
        }
        f.bars.togglePalette();
        QVERIFY(f.bars.paletteShown());
        QCOMPARE(open(), 1);
        f.bars.showSizePopup(Tool::pen);
        QVERIFY(!f.bars.paletteShown());
        QCOMPARE(open(), 1);
        f.bars.showSizePopup(Tool::pixelate); // has no sizes
        QVERIFY(!f.bars.sizePopupShown(Tool::pixelate));
        QCOMPARE(open(), 0);
        f.bars.showSizePopup(Tool::pen);
        f.bars.hidePopups();
        QCOMPARE(open(), 0);
    }

    void barsAreHiddenUntilTheyAreShown()
    {
        ToolbarFixture f;
        QVERIFY(!f.bars.isShown());
        f.canvas.show();
        QVERIFY(f.bar(Qt::Vertical).isHidden() && f.bar(Qt::Horizontal).isHidden());
        f.bars.show();
        QVERIFY(f.bars.isShown());
        QVERIFY(f.bar(Qt::Vertical).isVisible() && f.bar(Qt::Horizontal).isVisible());
        f.bars.togglePalette();
        f.bars.hide();
        QVERIFY(!f.bars.isShown() && !f.bars.paletteShown());
        QVERIFY(f.bar(Qt::Vertical).isHidden() && f.bar(Qt::Horizontal).isHidden());
    }

    void barsAndPopupsStandAroundTheSelection()
    {
        const ToolbarFixture f;
        QCOMPARE(f.bar(Qt::Vertical).geometry(), QRect(408, 50, 38, 390));
        QCOMPARE(f.bar(Qt::Horizontal).geometry(), QRect(170, 478, 230, 38));
        // The top of each popup is 4 points above its button's.
        QCOMPARE(f.palette().geometry(), QRect(452, 50 + 4 + 32 * 9 - 4, 198, 70));
        for (const Tool tool : sizedTools())
            QCOMPARE(f.sizePopup(tool).geometry(),
                     QRect(452, 50 + 32 * (1 + static_cast<int>(tool)), 198, 38));
    }

    void popupsFollowTheBarToTheOtherSide()
    {
        ToolbarFixture f;
        f.bars.layOut({500, 50, 400, 400}, kBarsCanvas);
        QCOMPARE(f.bar(Qt::Vertical).geometry(), QRect(454, 50, 38, 390));
        QCOMPARE(f.palette().x(), 498);
        f.bars.layOut({0, 0, 900, 600}, kBarsCanvas);
        QCOMPARE(f.bar(Qt::Vertical).geometry(), QRect(854, 4, 38, 390));
        QCOMPARE(f.palette().geometry().right() + 1, 848);
    }

    void onlyWhatIsShownCountsAsABarUnderThePointer()
    {
        ToolbarFixture f;
        const QPointF tools(410, 52);
        const QPointF actions(200, 500);
        const QPointF pen(500, 90);
        for (const QPointF& point : {tools, actions, pen})
            QVERIFY(!f.bars.isOver(point));
        f.bars.show();
        QVERIFY(f.bars.isOver(tools));
        QVERIFY(f.bars.isOver(actions));
        QVERIFY(!f.bars.isOver(pen));
        QVERIFY(!f.bars.isOver({300, 300}));
        f.bars.showSizePopup(Tool::pen);
        QVERIFY(f.bars.isOver(pen));
    }

    void barsWithNobodyListeningDoNothing()
    {
        ToolbarFixture f;
        f.bars.onPointer = nullptr;
        f.bars.onTool = nullptr;
        f.bars.onAction = nullptr;
        f.bars.onUndo = nullptr;
        f.bars.onRedo = nullptr;
        for (const auto& buttons : {f.tools(), f.actions()}) {
            for (BarButton* button : buttons)
                button->click();
        }
        QCOMPARE(f.taken(), QStringList());
        QVERIFY(f.bars.paletteShown());
    }

    void barsGoBeforeTheirCanvas()
    {
        ToolbarFixture f;
        {
            const Toolbar other(f.canvas, f.prefs);
            QCOMPARE(f.canvas.findChildren<PaletteView*>().size(), 14);
        }
        QCOMPARE(f.canvas.findChildren<PaletteView*>().size(), 7);
    }
};

BRINDLECAM_TEST(TestToolbar);

} // namespace brindlecam

#include "tst_toolbar.moc"
