#!/usr/bin/python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Build the offline base map of the Canary Islands from packaged data.

Inputs (see make.sh):  GSHHG 2.3.7 through `gmt coast`, es-atlas and
world-atlas (TopoJSON), ETOPO5 from ferret-datasets (netCDF), places.csv.
Outputs in OUT: land, context_land, municipalities, municipal_borders,
country_borders, bathymetry and places (GeoJSON).
"""
import json, math, os, subprocess, sys
import numpy as np
import netCDF4
from scipy import ndimage, interpolate
from shapely.geometry import (LineString, MultiPolygon, Point, Polygon, box,
                              MultiLineString, mapping, shape)
from shapely.ops import linemerge, polygonize, transform, unary_union
from shapely.prepared import prep
import matplotlib
matplotlib.use('Agg')
import matplotlib.pyplot as plt

WORK, OUT, SRC = sys.argv[1:4]
LAT0 = 28.3
KX, KY = 111320 * math.cos(math.radians(LAT0)), 110850      # metres per degree
ISL = (-18.60, 27.30, -13.10, 29.70)                        # island box
CTX = (-36.0, 15.0, 6.0, 43.5)                              # context box
TOL_ISL, TOL_CTX = 25.0, 350.0                              # metres

# GSHHG holds many specks off these coasts; below 1 km2 keep only rocks known to exist
ISLETS = [(29.118, -13.658), (29.276, -13.337), (29.310, -13.526), (28.966, -13.535), (28.955, -13.555),
          (28.960, -13.540), (27.938, -15.360), (28.600, -16.155), (28.592, -16.160), (28.379, -16.760), (27.822, -17.993)]

to_m = lambda g: transform(lambda x, y: (x * KX, y * KY), g)
to_d = lambda g: transform(lambda x, y: (x / KX, y / KY), g)


# ---------------------------------------------------------------- readers
def gshhg_lines(bounds, res):
    w, s, e, n = bounds
    txt = subprocess.run(['gmt', 'coast', f'-R{w}/{e}/{s}/{n}', f'-D{res}', '-A0/0/1',
                          '-W1', '-M', '--FORMAT_FLOAT_OUT=%.7f', '--FORMAT_GEO_OUT=D'],
                         check=True, capture_output=True, text=True).stdout
    lines, cur = [], []
    for row in txt.splitlines() + ['>']:
        if row.startswith('>'):
            if len(cur) > 1:
                lines.append(LineString(cur))
            cur = []
        elif row and row[0] != '#':
            a = row.split()
            cur.append((float(a[0]), float(a[1])))
    return lines


class Topo:
    def __init__(self, path):
        t = json.load(open(path))
        (sx, sy), (tx, ty) = t['transform']['scale'], t['transform']['translate']
        self.arcs = []
        for arc in t['arcs']:
            q = np.cumsum(np.array([p[:2] for p in arc]), axis=0)
            self.arcs.append([(x * sx + tx, y * sy + ty) for x, y in q])
        self.objects = t['objects']

    def ring(self, ids):
        out = []
        for i in ids:
            a = self.arcs[i] if i >= 0 else self.arcs[~i][::-1]
            out += a if not out else a[1:]
        return out

    def rings(self, g):                      # ids of the rings, per polygon part
        return [g['arcs']] if g['type'] == 'Polygon' else g.get('arcs', [])

    def polygon(self, g):
        parts = []
        for p in self.rings(g):
            r = [self.ring(x) for x in p]
            if len(r[0]) >= 4:
                parts.append(Polygon(r[0], [h for h in r[1:] if len(h) >= 4]).buffer(0))
        return unary_union(parts)


def polys(g):
    return [g] if isinstance(g, Polygon) else [p for p in getattr(g, 'geoms', []) if isinstance(p, Polygon)]


def lines_of(g):
    if g.is_empty: return []
    if isinstance(g, LineString): return [g]
    return [x for p in getattr(g, 'geoms', []) for x in lines_of(p)]


# ------------------------------------------------- 1. islands, registered
def nearest(line, pts):
    return np.array([line.interpolate(line.project(Point(p))).coords[0] for p in pts])


def register(ring, ctl):
    """Fit an affine map, then a smooth displacement field, that carries a GSHHG
    ring onto the control vertices of the national (IGN) outline.  Metres."""
    best = None
    for sx in (-800, -400, 0, 400):
        for sy in (-400, 0, 400, 800):
            w = ring + np.array([sx, sy], float)
            for _ in range(25):
                near, cen = nearest(LineString(w), ctl), w.mean(0)
                a = np.c_[(near - cen) / 1e4, np.ones(len(near))]
                lam = np.diag([.3, .3, 0.]) * len(near) * .05
                x = np.linalg.solve(a.T @ a + lam, a.T @ (ctl - near))
                w = w + np.c_[(w - cen) / 1e4, np.ones(len(w))] @ x
            err = np.hypot(*(ctl - nearest(LineString(w), ctl)).T).mean()
            if best is None or err < best[0]:
                best = (err, w)
    w = best[1]
    for bw in (8000., 5000., 3500., 2500.):
        for _ in range(4):
            near = nearest(LineString(w), ctl)
            d2 = ((w[:, None] - near[None]) ** 2).sum(2)
            k = np.exp(-d2 / (2 * bw * bw))
            w = w + .7 * (k @ (ctl - near)) / (k.sum(1)[:, None] + .3)
    return w


def islands(es_parts):
    raw = sorted(polygonize(linemerge(gshhg_lines(ISL, 'f'))), key=lambda p: -p.area)
    raw = [to_m(p) for p in raw]
    es_m = [to_m(p) for p in es_parts]
    big, field, small = [], [], []
    for p in raw:
        hits = [e for e in es_m if e.intersection(p).area > .3 * min(e.area, p.area)]
        ctl = np.array(sorted({c for e in hits for c in e.exterior.coords}))
        if len(ctl) >= 9 and p.area > 2e7:
            ring = np.array(p.exterior.coords)[:-1]
            w = register(np.r_[ring, ring[:1]], ctl)[:-1]
            field.append((ring, w - ring))
            big.append(Polygon(w).buffer(0))
        else:
            small.append(p)
    src = np.concatenate([f[0] for f in field]); dis = np.concatenate([f[1] for f in field])
    for p in small:                          # islets follow their nearest neighbours
        c = np.array(p.centroid.coords[0])
        d2 = ((src - c) ** 2).sum(1)
        k = 1 / (d2 + 1e6) ** 1.5
        s = (k[:, None] * dis).sum(0) / k.sum()
        big.append(transform(lambda x, y: (x + s[0], y + s[1]), p))
    u = unary_union(big)
    out = []
    for p in polys(u):
        p = Polygon(p.exterior)
        q = p.simplify(TOL_ISL if p.area > 1e6 else 10, preserve_topology=True)
        c = to_d(q).centroid
        if q.area > 1e6 or min(math.hypot(c.y - a, c.x - b) for a, b in ISLETS) < .008:
            out.append(to_d(q))
    return sorted((p for p in out if not p.is_empty), key=lambda p: -p.area)


# ------------------------------------------------------------ 2. context
def context():
    b = (CTX[0] - .5, CTX[1] - .5, CTX[2] + .5, CTX[3] + .5)
    frame = box(*b)
    edge = unary_union([LineString(frame.exterior.coords)] + gshhg_lines(b, 'f'))
    sea = Point(-20, 30)
    isl = box(*ISL)
    out = []
    for p in polygonize(edge):
        if p.contains(sea) or isl.contains(p.centroid) and p.area < 1:
            continue
        k = math.cos(math.radians(p.centroid.y))
        area = p.area * 111.2 ** 2 * k                       # km2
        selv = box(-16.2, 29.9, -15.7, 30.3).contains(p.centroid)
        if area < (.05 if selv else .6):
            continue
        tol = (60 if area < 60 else 150 if area < 3000 else TOL_CTX) / 1.11e5
        q = p.simplify(tol, preserve_topology=True)
        q = Polygon(q.exterior).buffer(0).intersection(box(*CTX))
        q = transform(lambda x, y: (round(x, 4), round(y, 4)), q).buffer(0)
        out += polys(q)
    return sorted((p for p in out if not p.is_empty), key=lambda p: -p.area)


# ------------------------------------------------- 3. municipal borders
def chaikin(pts, n=2):
    for _ in range(n):
        o = [pts[0]]
        for a, b in zip(pts, pts[1:]):
            o += [(.75 * a[0] + .25 * b[0], .75 * a[1] + .25 * b[1]),
                  (.25 * a[0] + .75 * b[0], .25 * a[1] + .75 * b[1])]
        pts = o[:1] + o[1:] + [pts[-1]]
    return pts


def municipalities(es, land):
    geo = [g for g in es.objects['municipalities']['geometries'] if g.get('id', '')[:2] in ('35', '38')]
    use = {}
    for g in geo:
        for part in es.rings(g):
            for r in part:
                for i in r:
                    use.setdefault(i if i >= 0 else ~i, set()).add(g['id'])
    inner = [es.arcs[i] for i, s in use.items() if len(s) == 2]
    deg = {}
    for a in inner:
        for p in (a[0], a[-1]):
            deg[p] = deg.get(p, 0) + 1
    lm = [to_m(p) for p in land if p.area > 1e-4]
    ext = []
    for a in inner:
        m = [(x * KX, y * KY) for x, y in a]
        isl = min(lm, key=lambda p: p.distance(LineString(m)))
        s = chaikin(m)
        for end in (0, -1):                  # coastal ends: pull onto, then past, our coast
            if deg[a[end]] == 1:
                p = Point(s[end])
                ring = isl.exterior
                q = ring.interpolate(ring.project(p))
                d = math.hypot(q.x - p.x, q.y - p.y)
                if isl.contains(p) and d > 0:
                    f = (d + 60) / d
                    tip = (p.x + (q.x - p.x) * f, p.y + (q.y - p.y) * f)
                    s = [tip] + s if end == 0 else s + [tip]
        ext.append(LineString(s).simplify(12))
    allland = unary_union(lm)
    cut = unary_union(ext + [p.exterior for p in lm])
    faces = [f for f in polygonize(cut) if allland.buffer(1).contains(f.representative_point())]
    src = {g['id']: to_m(es.polygon(g)) for g in geo}
    names = {g['id']: g['properties']['name'] for g in geo}
    got = {k: [] for k in src}
    for f in faces:
        best = max(src, key=lambda k: src[k].intersection(f).area)
        if src[best].intersection(f).area <= 0:
            best = min(src, key=lambda k: src[k].distance(f.representative_point()))
        got[best].append(f)
    for p in [to_m(p) for p in land if p.area <= 1e-4]:
        best = min(src, key=lambda k: src[k].distance(p))
        got[best].append(p)
    res = {k: unary_union(v) for k, v in got.items()}
    for k in list(res):                      # give slivers to the neighbour they touch most
        for q in [q for q in polys(res[k]) if q.area < 2e4]:
            touch = {j: res[j].boundary.intersection(q.boundary).length for j in res if j != k and res[j].distance(q) < .01}
            if touch and max(touch.values()) > 0:
                j = max(touch, key=touch.get)
                res[j] = unary_union([res[j], q])
                res[k] = unary_union([x for x in polys(res[k]) if x is not q and not x.equals(q)])
    ids = list(res)
    borders = []
    for i, a in enumerate(ids):
        for b in ids[i + 1:]:
            if res[a].distance(res[b]) > 0: continue
            x = res[a].boundary.intersection(res[b].boundary)
            ls = lines_of(x)
            if not ls: continue
            mg = linemerge(ls) if len(ls) > 1 else ls[0]
            for l in lines_of(mg):
                if l.length > 80:
                    borders.append((a, b, to_d(l)))
    return {k: (names[k], to_d(v)) for k, v in res.items() if not v.is_empty}, borders


# ------------------------------------------------- 4. country borders
def country_borders(wa, land):
    own = {}
    for g in wa.objects['countries']['geometries']:
        for part in wa.rings(g):
            for r in part:
                for i in r:
                    own.setdefault(i if i >= 0 else ~i, set()).add((g.get('properties') or {}).get('name', '?'))
    area = box(*CTX)
    out = []
    for i, s in own.items():
        if len(s) < 2: continue
        l = LineString(wa.arcs[i])
        if not l.intersects(area): continue
        for q in lines_of(l.intersection(area).simplify(.004)):
            a, b = sorted(s)[:2]
            out.append((a, b, int('W. Sahara' in s and 'Morocco' in s), q))
    return out


def round_ring(r, n=2):                      # Chaikin corner cutting on a closed ring
    c = np.array(r.coords)[:-1]
    for _ in range(n):
        d = np.roll(c, -1, 0)
        c = np.stack([.75 * c + .25 * d, .25 * c + .75 * d], 1).reshape(-1, 2)
    return LineString(np.r_[c, c[:1]]).simplify(.0015)


# ------------------------------------------------- 5. schematic bathymetry
def bathymetry(land, ctx):
    d = netCDF4.Dataset(os.path.join(WORK, 'etopo5.cdf'))
    lon = (np.round(np.arange(4320) * 5) / 60 + 180) % 360 - 180
    lat = np.round(np.arange(2161) * 5) / 60 - 90
    ix = np.where((lon >= CTX[0] - 1) & (lon <= CTX[2] + 1))[0]; ix = ix[np.argsort(lon[ix])]
    iy = np.where((lat >= CTX[1] - 1) & (lat <= CTX[3] + 1))[0]
    z = np.array(d['ROSE'][iy[0]:iy[-1] + 1, :])[:, ix]
    x, y = lon[ix], lat[iy]
    allland = unary_union(list(land) + list(ctx))
    # registration: which shift makes ETOPO5's emerged cells agree best with the islands?
    win = (x > -18.6) & (x < -13.2), (y > 27.4) & (y < 29.5)
    zz, xx, yy = z[np.ix_(win[1], win[0])], x[win[0]], y[win[1]]
    isl = unary_union(land)
    best = None
    for sx in np.arange(-3, 4) * 5 / 60 / 2:
        for sy in np.arange(-3, 4) * 5 / 60 / 2:
            p = prep(isl)
            m = np.array([[p.contains(Point(a + sx, b + sy)) for a in xx] for b in yy])
            score = np.corrcoef(m.ravel(), np.clip(zz, -1500, 300).ravel())[0, 1]
            if best is None or score > best[0]: best = (score, sx, sy)
    print('ETOPO5 shift (deg E, N) %.3f %.3f  corr %.2f' % (best[1], best[2], best[0]))
    x, y = x + best[1], y + best[2]
    step = 1 / 60 * 2
    gx, gy = np.arange(CTX[0], CTX[2] + step / 2, step), np.arange(CTX[1], CTX[3] + step / 2, step)
    zs = np.clip(ndimage.gaussian_filter(np.minimum(z, 0), .6), -6500, 0)
    f = interpolate.RectBivariateSpline(y, x, zs, kx=3, ky=3)
    g = f(gy, gx)
    # pull the sea floor up to the real coast: depth 0 on land, blended over ~12 km
    import matplotlib.path as mpath
    X, Y = np.meshgrid(gx, gy); pts = np.c_[X.ravel(), Y.ravel()]
    mask = np.zeros(len(pts), bool)
    for p in polys(allland):
        b = p.bounds
        if b[2] - b[0] < step: continue
        c = np.where((pts[:, 0] >= b[0]) & (pts[:, 0] <= b[2]) & (pts[:, 1] >= b[1]) & (pts[:, 1] <= b[3]))[0]
        mask[c] |= mpath.Path(np.array(p.exterior.coords)).contains_points(pts[c])
    mask = mask.reshape(X.shape)
    dist = ndimage.distance_transform_edt(~mask, sampling=(step * 110.85, step * 98)) # km
    cap = -60 - 95 * np.maximum(dist - 1.0, 0)             # never deeper than a steep slope
    g = np.maximum(g, cap)
    g = np.where(mask, 60, g)
    g = ndimage.gaussian_filter(g, 1.1)
    levels = [-200, -1000, -2000, -3000, -4000]
    feats = []
    for lv in levels:
        cs = plt.contourf(gx, gy, g, levels=[-1e5, lv], colors=['k'])
        ps = []
        for path in cs.collections[0].get_paths():
            path.should_simplify = False
            rings = [r for r in path.to_polygons() if len(r) >= 4]
            if not rings: continue
            poly = Polygon(rings[0]).buffer(0)
            for h in rings[1:]:
                poly = poly.difference(Polygon(h).buffer(0)) if Polygon(h).area < poly.area else poly
            ps.append(poly)
        u = unary_union(ps).buffer(0)
        keep = []
        for p in polys(u):
            if p.area < .012: continue
            p = Polygon(p.exterior, [h for h in p.interiors if Polygon(h).area > .006])
            p = p.simplify(.012, preserve_topology=True)
            keep.append(Polygon(round_ring(p.exterior), [round_ring(h) for h in p.interiors]).buffer(0))
        plt.close('all')
        feats.append((lv, MultiPolygon([p for q in keep for p in polys(q)])))
    return feats


# ---------------------------------------------------------------- output
def rnd(c, n):
    if isinstance(c[0], (int, float)): return [round(c[0], n), round(c[1], n)]
    return [rnd(x, n) for x in c]


def dedup(c):
    if isinstance(c[0][0], (int, float)):
        o = [c[0]]
        for p in c[1:]:
            if p != o[-1]: o.append(p)
        return o
    return [dedup(x) for x in c]


def geo(g, n):
    m = mapping(g)
    return {'type': m['type'], 'coordinates': dedup(rnd(m['coordinates'], n)) if m['type'] != 'Point' else rnd(m['coordinates'], n)}


def write(name, feats, n):
    fc = {'type': 'FeatureCollection', 'features': [{'type': 'Feature', 'properties': p, 'geometry': geo(g, n)} for p, g in feats]}
    path = os.path.join(OUT, name)
    with open(path, 'w', encoding='utf-8') as f:
        json.dump(fc, f, ensure_ascii=False, separators=(',', ':'))
    print('%-28s %4d features %8d bytes' % (name, len(feats), os.path.getsize(path)))
    return fc


def main():
    es = Topo(os.path.join(WORK, 'es/package/es/municipalities.json'))
    wa = Topo(os.path.join(WORK, 'world/package/countries-10m.json'))
    es_parts = polys(unary_union([es.polygon(g) for g in es.objects['municipalities']['geometries']
                                  if g.get('id', '')[:2] in ('35', '38')]))
    land = islands(es_parts)
    ctx = context()
    mun, borders = municipalities(es, land)
    cb = country_borders(wa, ctx)
    places, names = [], {}
    for row in open(os.path.join(SRC, 'places.csv'), encoding='utf-8'):
        if row.startswith('#') or not row.strip(): continue
        name, lat, lon, kind, rank, elev, isl, note = row.rstrip('\n').split('|')
        pr = {'name': name, 'kind': kind, 'rank': int(rank)}
        if elev: pr['elev'] = int(elev)
        if isl: pr['island'] = isl
        if note.startswith('side='): pr['side'] = note[5:]
        elif note: pr['note'] = note
        places.append((pr, Point(float(lon), float(lat))))
    # checks: each place must fall where its kind says
    seeds = {p['island']: None for p, _ in places if p['kind'] in ('island', 'islet') and p.get('island')}
    for p, g in places:
        if p['kind'] in ('island', 'islet') and p.get('island'):
            hit = [q for q in land if q.contains(g)]
            seeds[p['island']] = hit[0] if hit else None
            if hit: names[id(hit[0])] = p['island']
    bad = 0
    landu, ctxu = unary_union(land), unary_union(ctx)
    for p, g in places:
        k = p['kind']; why = ''
        if k in ('seamount', 'channel', 'sea'):
            if landu.contains(g) or ctxu.contains(g): why = 'on land'
        elif k in ('island_ctx', 'city_ctx', 'country', 'region'):
            if not ctxu.contains(g): why = 'not on context land, %.0f m off' % (to_m(ctxu).distance(to_m(g)))
        elif k == 'archipelago': pass
        elif p.get('island') and seeds.get(p['island']) is not None:
            if not seeds[p['island']].contains(g): why = 'off its island by %.0f m' % to_m(seeds[p['island']]).distance(to_m(g))
        elif not landu.contains(g): why = 'off land by %.0f m' % to_m(landu).distance(to_m(g))
        if why: bad += 1; print('PLACE', p['name'], why)
    print('places', len(places), 'misplaced', bad)
    bt = bathymetry(land, ctx)
    L = [({'name': names.get(id(p), ''), 'km2': round(to_m(p).area / 1e6, 2)}, p) for p in land]
    write('land.geojson', L, 5)
    write('context_land.geojson', [({}, p) for p in ctx], 4)
    M = []
    for k, (n, g) in sorted(mun.items()):
        big = max(polys(g), key=lambda q: q.area)
        r = big.representative_point()
        M.append(({'ine': k, 'name': n, 'label': [round(r.x, 4), round(r.y, 4)]}, g))
    write('municipalities.geojson', M, 5)
    write('municipal_borders.geojson', [({'a': a, 'b': b}, l) for a, b, l in borders], 5)
    write('country_borders.geojson', [({'a': a, 'b': b, 'disputed': q}, l) for a, b, q, l in cb], 4)
    write('bathymetry.geojson', [({'depth': -lv}, g) for lv, g in bt], 3)
    write('places.geojson', places, 4)


if __name__ == '__main__':
    main()
