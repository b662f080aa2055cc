// The value types of the API: conversions, sharing and limits.
#include <maya/MArgList.h>
#include <maya/MBoundingBox.h>
#include <maya/MColor.h>
#include <maya/MDoubleArray.h>
#include <maya/MEulerRotation.h>
#include <maya/MIntArray.h>
#include <maya/MMatrix.h>
#include <maya/MPoint.h>
#include <maya/MString.h>
#include <maya/MStringArray.h>
#include <maya/MTime.h>
#include <maya/MTransformationMatrix.h>
#include <maya/MVector.h>

#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <sstream>

namespace {

struct UnitKeeper {
    MTime::Unit before = MTime::uiUnit();
    ~UnitKeeper() { MTime::setUIUnit(before); }
};

std::string printed(const MTime& time) {
    std::ostringstream out;
    out << time;
    return out.str();
}

TEST(String, SharesBytesUntilWritten) {
    MString a("one");
    MString b(a);
    b += " two";
    EXPECT_STREQ("one", a.asChar());
    a += a;
    EXPECT_STREQ("oneone", a.asChar());
    const MString none(static_cast<const char*>(nullptr));
    EXPECT_EQ(0u, none.length());
    EXPECT_STREQ("", none.asChar());
}

TEST(String, CountsCharactersOfOtherScripts) {
    const MString text("Рисов 線 🎨");
    EXPECT_EQ(9u, text.numChars());
    EXPECT_GT(text.length(), text.numChars());
    EXPECT_TRUE(MString(text.asWChar()) == text);
    EXPECT_EQ(6, text.indexW("線"));
}

TEST(String, SplitsFindsAndReplaces) {
    MStringArray parts;
    MString("|a||b|").split('|', parts);
    ASSERT_EQ(2u, parts.length()); // empty parts are left out
    EXPECT_TRUE(parts[0] == "a" && parts[1] == "b");
    MString grown("aaa");
    grown.substitute("a", "aa"); // what was put in is not replaced again
    EXPECT_STREQ("aaaaaa", grown.asChar());
    EXPECT_STREQ("bcd", MString("abcdef").substring(1, 3).asChar());
    EXPECT_STREQ("", MString("abc").substring(2, 1).asChar());
    EXPECT_STREQ("c", MString("abc").substring(2, 99).asChar());
}

TEST(String, TellsNumbersFromText) {
    EXPECT_TRUE(MString("-12").isInt());
    EXPECT_FALSE(MString("12.5").isInt());
    EXPECT_FALSE(MString("99999999999").isInt());
    EXPECT_FALSE(MString("").isInt());
    EXPECT_FALSE(MString("-1").isUnsigned());
    EXPECT_TRUE(MString("1e3").isDouble());
    EXPECT_FALSE(MString("1e3x").isDouble());
    EXPECT_DOUBLE_EQ(0.1, MString("0.1").asDouble());
}

TEST(Time, WholeFramesStayWholeThroughAnyUnit) {
    const MTime::Unit units[] = {MTime::kFilm,     MTime::kPALFrame, MTime::kNTSCFrame,
                                 MTime::kShowScan, MTime::k29_97FPS, MTime::k23_976FPS,
                                 MTime::k120FPS,   MTime::kSeconds,  MTime::kMilliseconds,
                                 MTime::k6FPS,     MTime::k48000FPS};
    for (const MTime::Unit from : units) {
        for (const MTime::Unit through : units) {
            for (int frame : {-100000, -1, 0, 1, 7, 23, 1001, 99999}) {
                const MTime there(MTime(frame, from).as(through), through);
                EXPECT_EQ(frame, static_cast<int>(there.as(from)))
                    << frame << " from " << from << " through " << through;
                EXPECT_TRUE(there == MTime(frame, from));
            }
        }
    }
}

TEST(Time, ComparesMomentsNotNumbers) {
    EXPECT_TRUE(MTime(24, MTime::kFilm) == MTime(25, MTime::kPALFrame));
    EXPECT_TRUE(MTime(1, MTime::kSeconds) < MTime(25, MTime::kFilm));
    EXPECT_DOUBLE_EQ(48.0,
                     (MTime(1, MTime::kSeconds) + MTime(1, MTime::kSeconds)).as(MTime::kFilm));
    EXPECT_FALSE(MTime::setUIUnit(MTime::kInvalid));
}

TEST(Time, ArgumentsReadWhatWasPrinted) {
    const UnitKeeper keeper;
    std::mt19937 random(7);
    for (int unit = MTime::kHours; unit < MTime::kLast; ++unit) {
        for (int round = 0; round < 20; ++round) {
            const int frame = static_cast<int>(random() % 200001) - 100000;
            const MTime time(frame, static_cast<MTime::Unit>(unit));
            MArgList list;
            list.addArg(MString(printed(time).c_str()));
            MTime::setUIUnit(MTime::kPALFrame); // what is printed does not depend on it
            MStatus status;
            const MTime back = list.asTime(0, &status);
            ASSERT_TRUE(status) << printed(time);
            EXPECT_TRUE(back == time) << printed(time);
            EXPECT_EQ(frame, static_cast<int>(back.as(time.unit()))) << printed(time);
        }
    }
}

TEST(ArgList, ConvertsOrFails) {
    const UnitKeeper keeper;
    MTime::setUIUnit(MTime::kPALFrame);
    MArgList list;
    for (const char* text :
         {"12", "-3.9", "true", "\"", "3000000000", "nan", "7pal", "7parsec", ""})
        list.addArg(MString(text));
    MStatus status;
    EXPECT_EQ(12, list.asInt(0, &status));
    EXPECT_TRUE(status);
    EXPECT_EQ(-3, list.asInt(1, &status)); // toward zero
    EXPECT_TRUE(list.asBool(2, &status) && status);
    EXPECT_TRUE(list.asString(3, &status) == "\"" && status);
    for (unsigned int bad : {3u, 4u, 5u, 7u, 8u, 9u, 4000u}) {
        list.asInt(bad, &status);
        EXPECT_FALSE(status) << bad;
    }
    EXPECT_EQ(0.0, list.asDouble(5, &status));
    EXPECT_FALSE(status);
    EXPECT_TRUE(list.asTime(6, &status) == MTime(7, MTime::kPALFrame) && status);
    list.asTime(7, &status);
    EXPECT_FALSE(status);
    // A bare number is in the interface unit.
    EXPECT_TRUE(list.asTime(0, &status) == MTime(12, MTime::kPALFrame));
}

TEST(ArgList, FindsFlagsByEitherName) {
    MArgList list;
    for (const char* text : {"a", "-longName", "-s", "-"})
        list.addArg(MString(text));
    EXPECT_EQ(1u, list.flagIndex("ln", "longName"));
    EXPECT_EQ(1u, list.flagIndex("-ln", "-longName"));
    EXPECT_EQ(2u, list.flagIndex("s", nullptr));
    EXPECT_EQ(MArgList::kInvalidArgIndex, list.flagIndex("x", "long"));
}

TEST(Array, RefusesPlacesItDoesNotHave) {
    MIntArray array(3, 5);
    EXPECT_FALSE(array.set(1, 3));
    EXPECT_FALSE(array.remove(3));
    EXPECT_FALSE(array.insert(1, 4));
    EXPECT_TRUE(array.insert(9, 3));
    EXPECT_EQ(4u, array.length());
    int raw[4];
    array.get(raw);
    EXPECT_EQ(9, raw[3]);
}

TEST(Matrix, InverseAndPointsAsRows) {
    std::mt19937 random(3);
    std::uniform_real_distribution<double> number(-2.0, 2.0);
    for (int round = 0; round < 50; ++round) {
        MMatrix m;
        for (unsigned int i = 0; i < 16; ++i)
            m(i / 4, i % 4) = number(random);
        if (std::abs(m.det4x4()) < 0.05)
            continue;
        EXPECT_TRUE((m * m.inverse()).isEquivalent(MMatrix::identity, 1e-8)) << "round " << round;
    }
    MMatrix move;
    move(3, 0) = 5.0;
    EXPECT_TRUE((MPoint(1, 2, 3) * move) == MPoint(6, 2, 3));
    EXPECT_TRUE((MVector(1, 2, 3) * move) == MVector(1, 2, 3)); // directions do not move
}

TEST(Matrix, RotationsComeApartAsTheyWerePut) {
    std::mt19937 random(11);
    std::uniform_real_distribution<double> angle(-3.1, 3.1);
    for (int order = 0; order < 6; ++order) {
        for (int round = 0; round < 50; ++round) {
            const MEulerRotation rotation(angle(random), angle(random), angle(random),
                                          static_cast<MEulerRotation::RotationOrder>(order));
            const MEulerRotation back =
                MEulerRotation::decompose(rotation.asMatrix(), rotation.order);
            EXPECT_TRUE(back.asMatrix().isEquivalent(rotation.asMatrix(), 1e-9))
                << "order " << order << " seed 11 round " << round;
        }
    }
    // A quarter turn about z takes x to y.
    const MVector turned = MVector::xAxis * MEulerRotation(0, 0, std::acos(-1.0) / 2).asMatrix();
    EXPECT_TRUE(turned.isEquivalent(MVector::yAxis, 1e-12));
}

TEST(Matrix, MirroredScaleIsKept) {
    MTransformationMatrix transform;
    const double scale[3] = {-2.0, 3.0, 0.5};
    transform.setScale(scale, MSpace::kTransform);
    transform.rotateTo(MEulerRotation(0.3, -0.4, 0.5));
    transform.setTranslation(MVector(1, 2, 3), MSpace::kTransform);
    const MMatrix matrix = transform.asMatrix();
    EXPECT_TRUE(MTransformationMatrix(matrix).asMatrix().isEquivalent(matrix, 1e-9));
}

TEST(BoundingBox, EmptyHoldsNothingAndTurnsWithItsMatrix) {
    MBoundingBox box;
    EXPECT_FALSE(box.contains(MPoint::origin));
    box.expand(MPoint(-1, 0, 0));
    box.expand(MPoint(1, 2, 0));
    EXPECT_DOUBLE_EQ(2.0, box.height());
    box.transformUsing(MEulerRotation(0, 0, std::acos(-1.0) / 2).asMatrix());
    EXPECT_NEAR(2.0, box.width(), 1e-12); // what was up is sideways
    EXPECT_NEAR(-2.0, box.min().x, 1e-12);
}

TEST(Color, HueSaturationValue) {
    const MColor orange(MColor::kHSV, 30.0f, 1.0f, 1.0f);
    EXPECT_NEAR(1.0f, orange.r, 1e-5f);
    EXPECT_NEAR(0.5f, orange.g, 1e-5f);
    EXPECT_NEAR(0.0f, orange.b, 1e-5f);
    EXPECT_EQ(1.0f, MColor().a);
}

} // namespace
