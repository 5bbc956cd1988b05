#include "canvas/AnnotationList.h"
#include "support/TestCase.h"

namespace brindlecam {

namespace {

Annotation listedBadge(const QColor& color, int number)
{
    Annotation badge(Tool::number, color, {20, 20});
    badge.setLineWidth(26);
    badge.setNumber(number);
    return badge;
}

AnnotationList::Mark placedBadge(AnnotationList& list, const QColor& color)
{
    return list.append(listedBadge(color, list.nextNumber(color)));
}

Annotation listedDot(QPointF at)
{
    return Annotation(Tool::pen, Qt::red, at);
}

} // namespace

class TestAnnotationList final : public test::TestCase {
    Q_OBJECT

private Q_SLOTS:
    void badgesCountPerColour()
    {
        AnnotationList list;
        QCOMPARE(placedBadge(list, Qt::red)->number(), 1);
        const AnnotationList::Mark second = placedBadge(list, Qt::red);
        QCOMPARE(second->number(), 2);
        QCOMPARE(placedBadge(list, Qt::blue)->number(), 1);
        QVERIFY(list.remove(second));
        QCOMPARE(list.nextNumber(Qt::red), 2);
    }

    void numbersOfOtherToolsDoNotCount()
    {
        AnnotationList list;
        Annotation dot = listedDot({5, 5});
        dot.setNumber(7);
        list.append(dot);
        QCOMPARE(list.nextNumber(Qt::red), 1);
    }

    void aLowerBadgeTakenAwayLeavesItsNumberUnused()
    {
        AnnotationList list;
        const AnnotationList::Mark first = placedBadge(list, Qt::red);
        placedBadge(list, Qt::red);
        QVERIFY(list.remove(first));
        QCOMPARE(list.nextNumber(Qt::red), 3);
    }

    void everyStepCanBeUndoneAndRedone()
    {
        AnnotationList list;
        const AnnotationList::Mark a = list.append(listedDot({1, 1}));
        const AnnotationList::Mark b = list.append(listedDot({2, 2}));
        QVERIFY(list.remove(a));
        QCOMPARE(list.marks(), AnnotationList::Marks{b});
        QVERIFY(list.undo());
        QCOMPARE(list.marks(), (AnnotationList::Marks{a, b}));
        QVERIFY(list.undo());
        QVERIFY(list.undo());
        QVERIFY(list.isEmpty());
        QVERIFY(!list.canUndo());
        QVERIFY(list.redo());
        QVERIFY(list.redo());
        QVERIFY(list.redo());
        QCOMPARE(list.marks(), AnnotationList::Marks{b});
        QVERIFY(!list.canRedo());
    }

    void withoutStepsUndoAndRedoDoNothing()
    {
        AnnotationList list;
        QVERIFY(!list.undo());
        QVERIFY(!list.redo());
        QVERIFY(list.isEmpty());
    }

    void aNewMarkAfterAnUndoLeavesNothingToRedo()
    {
        AnnotationList list;
        list.append(listedDot({1, 1}));
        list.append(listedDot({2, 2}));
        QVERIFY(list.undo());
        QVERIFY(list.canRedo());
        const AnnotationList::Mark third = list.append(listedDot({3, 3}));
        QVERIFY(!list.canRedo());
        QVERIFY(!list.redo());
        QVERIFY(list.undo());
        QCOMPARE(list.marks().size(), std::size_t(1));
        QVERIFY(list.marks().front() != third);
    }

    void aMoveOfManyReplacementsIsOneStep()
    {
        AnnotationList list;
        AnnotationList::Mark mark = list.append(listedDot({1, 1}));
        list.append(listedDot({50, 50}));
        list.checkpoint();
        for (int i = 0; i < 30; ++i) {
            Annotation moved = *mark;
            moved.translate({1, 2});
            mark = list.replace(mark, moved);
            QVERIFY(mark);
        }
        QCOMPARE(list.marks().front()->points().first(), QPointF(31, 61));
        QVERIFY(list.undo());
        QCOMPARE(list.marks().front()->points().first(), QPointF(1, 1));
        QVERIFY(list.redo());
        QCOMPARE(list.marks().front(), mark);
    }

    void marksAreFoundByIdentityNotByLooks()
    {
        AnnotationList list;
        list.append(listedDot({1, 1}));
        const auto twin = std::make_shared<const Annotation>(listedDot({1, 1}));
        QVERIFY(!list.remove(twin));
        QVERIFY(!list.replace(twin, listedDot({9, 9})));
        QCOMPARE(list.marks().size(), std::size_t(1));
        QVERIFY(list.undo());
        QVERIFY(!list.canUndo());
    }

    void theTopmostMarkUnderThePointIsFound()
    {
        AnnotationList list;
        const AnnotationList::Mark lower = list.append(listedDot({10, 10}));
        const AnnotationList::Mark upper = list.append(listedDot({12, 10}));
        QCOMPARE(list.topmostAt({11, 10}), upper);
        QCOMPARE(list.topmostAt({4, 10}), lower);
        QVERIFY(!list.topmostAt({40, 40}));
    }

    void clearingForgetsTheStepsToo()
    {
        AnnotationList list;
        list.append(listedDot({1, 1}));
        list.append(listedDot({2, 2}));
        QVERIFY(list.undo());
        list.clear();
        QVERIFY(list.isEmpty());
        QVERIFY(!list.canUndo());
        QVERIFY(!list.canRedo());
    }

    void earlierStatesShareTheirMarks()
    {
        AnnotationList list;
        const AnnotationList::Mark mark = list.append(listedDot({1, 1}));
        const long before = mark.use_count();
        for (int i = 0; i < 500; ++i)
            list.checkpoint();
        QCOMPARE(mark.use_count(), before + 500);
    }
};

BRINDLECAM_TEST(TestAnnotationList);

} // namespace brindlecam

#include "tst_annotationlist.moc"
