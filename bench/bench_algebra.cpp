/// Small matrices and quaternions against Eigen's fixed-size ones, at the same flags.
#include "bench/compare.h"
#include "util/fixedmatrix.h"
#include "util/matrix4.h"
#include "util/quat.h"
#include "util/random.h"
#include "util/riccati.h"

#include <Eigen/Dense>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

constexpr int kStates = 12;
constexpr int kInputs = 4;
constexpr int kIterations = 50; // a controller's first solve

using StateMatrix = Eigen::Matrix<double, kStates, kStates>;
using InputMatrix = Eigen::Matrix<double, kStates, kInputs>;
using GainMatrix = Eigen::Matrix<double, kInputs, kStates>;

struct EigenModel
{
    StateMatrix A;
    InputMatrix B;
    Eigen::Matrix<double, kStates, 1> q;
    Eigen::Matrix<double, kInputs, 1> r;
};

/// A damped system with weak random couplings, so that the iteration converges.
void fillModels(tvw::RiccatiModel<kStates, kInputs>& ours, EigenModel& peer)
{
    tvw::Random random(3);
    for (int i = 0; i < kStates; ++i) {
        for (int j = 0; j < kStates; ++j) {
            peer.A(i, j) = ours.A(i, j) = (i == j ? 0.95 : 0.0) + 0.1 * random.centred();
        }
        for (int j = 0; j < kInputs; ++j) {
            peer.B(i, j) = ours.B(i, j) = random.centred();
        }
        peer.q(i) = ours.q[i] = 1.0 + random.next01();
    }
    for (int i = 0; i < kInputs; ++i) {
        peer.r(i) = ours.r[i] = 1.0 + random.next01();
    }
}

void peerStep(const EigenModel& m, StateMatrix& P)
{
    InputMatrix PB;
    PB.noalias() = P * m.B;
    Eigen::Matrix<double, kInputs, kInputs> N;
    N.noalias() = m.B.transpose() * PB;
    N.diagonal() += m.r;
    const GainMatrix W = N.ldlt().solve(PB.transpose());
    StateMatrix reduced = P;
    reduced.noalias() -= PB * W;
    StateMatrix moved;
    moved.noalias() = reduced * m.A;
    P.noalias() = m.A.transpose() * moved;
    P.diagonal() += m.q;
}

void riccatiAgainstEigen(benchmark::State& state)
{
    tvw::RiccatiModel<kStates, kInputs> model;
    EigenModel peerModel;
    fillModels(model, peerModel);
    StateMatrix peerP;
    tvw::FixedMatrix<kStates, kStates> P;
    bool solved = true;
    const auto peer = [&] {
        peerP.setIdentity();
        for (int i = 0; i < kIterations; ++i) {
            peerStep(peerModel, peerP);
        }
        benchmark::DoNotOptimize(peerP);
    };
    const auto ours = [&] {
        P = tvw::FixedMatrix<kStates, kStates>::identity();
        for (int i = 0; i < kIterations; ++i) {
            solved = tvw::riccatiStep(model, P) && solved;
        }
        benchmark::DoNotOptimize(P);
    };
    peer();
    ours();
    double worst = 0.0;
    for (int i = 0; i < kStates; ++i) {
        for (int j = 0; j < kStates; ++j) {
            worst = std::max(worst, std::abs(P(i, j) - peerP(i, j)));
        }
    }
    if (!solved || !(worst < 1e-9 * peerP.norm())) {
        state.SkipWithError("the solutions differ");
        return;
    }
    tvw::bench::compare(state, peer, ours);
}
BENCHMARK(riccatiAgainstEigen)->Name("riccati_vs_eigen");

struct Pose
{
    tvw::Quatd q;
    tvw::Vector3d v;
};

std::vector<Pose> poses(int count)
{
    tvw::Random random(5);
    std::vector<Pose> out;
    for (int i = 0; i < count; ++i) {
        const tvw::Vector3d turn{random.centred(), random.centred(), random.centred()};
        out.push_back({tvw::fromRotationVector(turn * 6.0), turn * 10.0});
    }
    return out;
}

/// Runs both over the same poses, compares the sums of what they answer, and then the times.
template <class Peer, class Ours>
void compareOverPoses(benchmark::State& state, Peer peerOf, Ours oursOf)
{
    const std::vector<Pose> all = poses(1024);
    std::vector<Eigen::Quaterniond> peerAll;
    for (const Pose& p : all) {
        peerAll.emplace_back(p.q.w, p.q.x, p.q.y, p.q.z);
    }
    Eigen::Vector3d peerSum;
    tvw::Vector3d oursSum;
    const auto peer = [&] {
        peerSum.setZero();
        for (std::size_t i = 1; i < all.size(); ++i) {
            const Eigen::Vector3d v(all[i].v.x, all[i].v.y, all[i].v.z);
            peerSum += peerOf(peerAll[i - 1], peerAll[i], v);
        }
        benchmark::DoNotOptimize(peerSum);
    };
    const auto ours = [&] {
        oursSum = {};
        for (std::size_t i = 1; i < all.size(); ++i) {
            oursSum += oursOf(all[i - 1].q, all[i].q, all[i].v);
        }
        benchmark::DoNotOptimize(oursSum);
    };
    peer();
    ours();
    const tvw::Vector3d expected{peerSum.x(), peerSum.y(), peerSum.z()};
    if (!(tvw::length(oursSum - expected) < 1e-9 * static_cast<double>(all.size()))) {
        state.SkipWithError("the sums differ");
        return;
    }
    tvw::bench::compare(state, peer, ours);
}

using EigenQuat = Eigen::Quaterniond;
using EigenVector = Eigen::Vector3d;
using tvw::Quatd;
using tvw::Vector3d;

void quaternionProduct(benchmark::State& state)
{
    compareOverPoses(
        state,
        [](const EigenQuat& a, const EigenQuat& b, const EigenVector&) -> EigenVector {
            return (b * a).vec();
        },
        [](const Quatd& a, const Quatd& b, const Vector3d&) -> Vector3d {
            const Quatd c = a * b;
            return {c.x, c.y, c.z};
        });
}
BENCHMARK(quaternionProduct)->Name("quaternion_vs_eigen/product");

void quaternionRotate(benchmark::State& state)
{
    compareOverPoses(
        state,
        [](const EigenQuat& a, const EigenQuat&, const EigenVector& v) -> EigenVector {
            return a * v;
        },
        [](const Quatd& a, const Quatd&, const Vector3d& v) { return rotate(a, v); });
}
BENCHMARK(quaternionRotate)->Name("quaternion_vs_eigen/rotate");

Eigen::Matrix4d peerMatrix(const EigenQuat& q, const EigenVector& v)
{
    Eigen::Matrix4d M = Eigen::Matrix4d::Identity();
    M.topLeftCorner<3, 3>() = q.toRotationMatrix();
    M.topRightCorner<3, 1>() = v;
    return M;
}

tvw::Matrix4 oursMatrix(const Quatd& q, const Vector3d& v)
{
    tvw::Matrix4 M = tvw::toMatrix(q);
    tvw::setTranslation(M, v);
    return M;
}

void matrixProduct(benchmark::State& state)
{
    compareOverPoses(
        state,
        [](const EigenQuat& a, const EigenQuat& b, const EigenVector& v) -> EigenVector {
            const Eigen::Matrix4d M = peerMatrix(a, v) * peerMatrix(b, v);
            return M.topRightCorner<3, 1>() + M.block<3, 1>(0, 1);
        },
        [](const Quatd& a, const Quatd& b, const Vector3d& v) {
            const tvw::Matrix4 M = oursMatrix(a, v) * oursMatrix(b, v);
            return translationOf(M) + M.axis(1);
        });
}
BENCHMARK(matrixProduct)->Name("quaternion_vs_eigen/matrix_product");

void matrixInverse(benchmark::State& state)
{
    compareOverPoses(
        state,
        [](const EigenQuat& a, const EigenQuat&, const EigenVector& v) -> EigenVector {
            const Eigen::Matrix4d M = peerMatrix(a, v).inverse();
            return M.topRightCorner<3, 1>() + M.block<3, 1>(0, 1);
        },
        [](const Quatd& a, const Quatd&, const Vector3d& v) {
            const tvw::Matrix4 M = inverse(oursMatrix(a, v));
            return translationOf(M) + M.axis(1);
        });
}
BENCHMARK(matrixInverse)->Name("quaternion_vs_eigen/matrix_inverse");

} // namespace
